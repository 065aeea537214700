#include "tests/bundle/runtime/Messages.h"

#include "tests/bundle/AppKitSelectors.h"
#include "tests/bundle/BundleImage.h"

#include <objc/message.h>

#include <algorithm>
#include <set>
#include <tuple>

namespace {

std::vector<SentMessage> sent;
std::set<std::tuple<Class, std::string>> seen;

struct Super {
    id receiver;
    Class subclass;
};

void writeDown(Class lookedIn, SEL selector, IMP code) {
    const char* const name = sel_getName(selector);
    if (!seen.emplace(lookedIn, name).second) {
        return;
    }
    sent.push_back({lookedIn, class_isMetaClass(lookedIn) != 0, name,
                    BundleImage::ofCode(reinterpret_cast<const void*>(code)) != nullptr,
                    class_respondsToSelector(lookedIn, selector) != 0});
}

bool allows(const AppKitSelector& row, const SentMessage& message) {
    if (row.selector != message.selector || row.ofClass != message.toClass) {
        return false;
    }
    const Class declaring = objc_getClass(row.declaredIn.c_str());
    Class above =
        message.toClass ? objc_getClass(class_getName(message.receiver)) : message.receiver;
    while (above != Nil && above != declaring) {
        above = class_getSuperclass(above);
    }
    return declaring != Nil && above == declaring;
}

bool isListed(const SentMessage& message) {
    const auto& outside = outsideSelectors();
    if (std::find(outside.begin(), outside.end(), message.selector) != outside.end()) {
        return true;
    }
    const auto& rows = appKitSelectors();
    return std::any_of(rows.begin(), rows.end(),
                       [&](const AppKitSelector& row) { return allows(row, message); });
}

} // namespace

extern "C" IMP tvdelayMethodFor(id receiver, SEL selector) {
    const IMP code = objc_msg_lookup(receiver, selector);
    writeDown(object_getClass(receiver), selector, code);
    return code;
}

extern "C" IMP tvdelayMethodForSuper(const Super* super, SEL selector) {
    const Class above = class_getSuperclass(super->subclass);
    const IMP code = class_getMethodImplementation(above, selector);
    writeDown(above, selector, code);
    return code;
}

std::string SentMessage::text() const {
    return std::string(toClass ? "+[" : "-[") + class_getName(receiver) + " " + selector + "]";
}

const std::vector<SentMessage>& sentMessages() {
    return sent;
}

void forgetSentMessages() {
    sent.clear();
    seen.clear();
}

std::vector<std::string> unansweredMessages() {
    std::vector<std::string> texts;
    for (const SentMessage& message : sent) {
        if (!message.answered) {
            texts.push_back(message.text());
        }
    }
    return texts;
}

std::vector<std::string> unlistedMessages() {
    std::vector<std::string> texts;
    for (const SentMessage& message : sent) {
        if (message.answered && !message.own && !isListed(message)) {
            texts.push_back(message.text());
        }
    }
    return texts;
}
