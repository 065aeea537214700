#include "host/check/LastCall.h"

#include "host/base/PlainText.h"
#include "host/plugin/OpcodeNames.h"

#include <cstdio>
#include <cstring>

namespace tvhost {

void LastCall::note(Kind newKind, VstInt32 newOpcode, VstInt32 newIndex, std::int64_t newValue,
                    float newOpt) {
    opcode.store(newOpcode, std::memory_order_relaxed);
    index.store(newIndex, std::memory_order_relaxed);
    value.store(newValue, std::memory_order_relaxed);
    opt.store(newOpt, std::memory_order_relaxed);
    kind.store(newKind, std::memory_order_relaxed);
}

void LastCall::setPhase(const std::string& text) {
    const std::size_t length = text.copy(phase, sizeof phase - 1);
    phase[length] = 0;
}

std::string LastCall::text() const {
    char words[128] = "";
    switch (kind.load()) {
    case kNone:
        std::snprintf(words, sizeof words, "before its first call");
        break;
    case kLoad:
        std::snprintf(words, sizeof words, "while it was loaded or made an effect");
        break;
    case kDispatch:
        std::snprintf(words, sizeof words, "in %s(index %d, value %lld, opt %g)",
                      effectOpcodeName(opcode.load()).c_str(), index.load(),
                      static_cast<long long>(value.load()), static_cast<double>(opt.load()));
        break;
    case kSetParameter:
        std::snprintf(words, sizeof words, "in setParameter(%d, %g)", index.load(),
                      static_cast<double>(opt.load()));
        break;
    case kGetParameter:
        std::snprintf(words, sizeof words, "in getParameter(%d)", index.load());
        break;
    case kProcess:
        std::snprintf(words, sizeof words, "in processReplacing of %lld frames",
                      static_cast<long long>(value.load()));
        break;
    case kUnload:
        std::snprintf(words, sizeof words, "after its last call, while it was unloaded");
        break;
    default:
        break;
    }
    const std::string about(phase, strnlen(phase, sizeof phase));
    return std::string(words) + (about.empty() ? "" : ", " + plainText(about));
}

} // namespace tvhost
