#include "host/plugin/CallLog.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/plugin/OpcodeNames.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>

#include <unistd.h>

namespace tvhost {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestText = 256; // bytes of what a plug-in says

bool isTextToEffect(VstInt32 opcode) {
    return opcode == effSetProgramName || opcode == effCanDo || opcode == effString2Parameter;
}

bool isTextFromEffect(VstInt32 opcode) {
    switch (opcode) {
    case effGetProgramName:
    case effGetParamLabel:
    case effGetParamDisplay:
    case effGetParamName:
    case effGetProgramNameIndexed:
    case effGetEffectName:
    case effGetErrorText:
    case effGetVendorString:
    case effGetProductString:
        return true;
    default:
        return false;
    }
}

std::string quoted(const void* text) {
    const char* const bytes = static_cast<const char*>(text);
    return " \"" + plainText(std::string(bytes, strnlen(bytes, kLongestText))) + "\"";
}

// What an effect's record held before its calls were led past here.
struct Originals {
    VstIntPtr (*dispatcher)(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float);
    void (*setParameter)(AEffect*, VstInt32, float);
    float (*getParameter)(AEffect*, VstInt32);
    void (*processReplacing)(AEffect*, float**, float**, VstInt32);
};

class CallLog {
public:
    explicit CallLog(const std::string& path) : file_(std::fopen(path.c_str(), "we")) {
        if (!file_) {
            throw UserError("--log " + path + " cannot be written: " + std::strerror(errno) +
                            "; give a file in a folder that can be");
        }
        // Line by line, so that it is all there when a plug-in crashes.
        std::setvbuf(file_, nullptr, _IOLBF, 0);
    }
    ~CallLog() { std::fclose(file_); }
    CallLog(const CallLog&) = delete;
    CallLog& operator=(const CallLog&) = delete;

    void write(const char* who, const std::string& what) {
        const std::chrono::duration<double> time = Clock::now() - begin_;
        const std::lock_guard<std::mutex> lock(mutex_);
        std::fprintf(file_, "%12s  %d  %-6s  %s\n", fixedNumber(time.count(), 6).c_str(), gettid(),
                     who, what.c_str());
    }

    void keep(const AEffect* effect, const Originals& originals) {
        const std::lock_guard<std::mutex> lock(mutex_);
        effects_[effect] = originals;
    }
    Originals of(const AEffect* effect) {
        const std::lock_guard<std::mutex> lock(mutex_);
        return effects_[effect];
    }

    audioMasterCallback host = nullptr;

private:
    std::FILE* file_;
    Clock::time_point begin_ = Clock::now();
    std::mutex mutex_;
    std::map<const AEffect*, Originals> effects_;
};

// Plug-ins may call to the very end of the process.
CallLog* theLog = nullptr;

VstIntPtr loggedHost(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                     float opt) {
    std::string call = hostOpcodeName(opcode) + " index " + std::to_string(index) + " value " +
                       std::to_string(value) + " opt " + exactNumber(opt);
    if (opcode == audioMasterCanDo && ptr) {
        call += quoted(ptr);
    }
    theLog->write("plugin", call);
    const VstIntPtr answer = theLog->host(effect, opcode, index, value, ptr, opt);
    theLog->write("plugin", hostOpcodeName(opcode) + " = " + std::to_string(answer));
    return answer;
}

VstIntPtr loggedDispatcher(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                           void* ptr, float opt) {
    std::string call = effectOpcodeName(opcode) + " index " + std::to_string(index) + " value " +
                       std::to_string(value) + " opt " + exactNumber(opt);
    if (isTextToEffect(opcode) && ptr) {
        call += quoted(ptr);
    }
    theLog->write("host", call);
    const VstIntPtr answer = theLog->of(effect).dispatcher(effect, opcode, index, value, ptr, opt);
    theLog->write("host", effectOpcodeName(opcode) + " = " + std::to_string(answer) +
                              (isTextFromEffect(opcode) && ptr ? quoted(ptr) : ""));
    return answer;
}

void loggedSetParameter(AEffect* effect, VstInt32 index, float value) {
    theLog->write("host",
                  "setParameter index " + std::to_string(index) + " value " + exactNumber(value));
    theLog->of(effect).setParameter(effect, index, value);
}

float loggedGetParameter(AEffect* effect, VstInt32 index) {
    const float value = theLog->of(effect).getParameter(effect, index);
    theLog->write("host",
                  "getParameter index " + std::to_string(index) + " = " + exactNumber(value));
    return value;
}

void loggedProcess(AEffect* effect, float** inputs, float** outputs, VstInt32 frames) {
    theLog->write("host", "processReplacing frames " + std::to_string(frames));
    const Clock::time_point begin = Clock::now();
    theLog->of(effect).processReplacing(effect, inputs, outputs, frames);
    const std::chrono::duration<double, std::micro> time = Clock::now() - begin;
    theLog->write("host", "processReplacing took " + fixedNumber(time.count(), 1) + " us");
}

} // namespace

void logCallsInto(const std::string& file) {
    delete theLog;
    theLog = nullptr;
    theLog = std::make_unique<CallLog>(file).release();
}

AEffect* createLoggedEffect(AEffect* (*entry)(audioMasterCallback), audioMasterCallback host) {
    if (!theLog) {
        return entry(host);
    }
    theLog->host = host;
    theLog->write("host", "VSTPluginMain");
    AEffect* const effect = entry(loggedHost);
    theLog->write("host", effect ? "VSTPluginMain gave an effect" : "VSTPluginMain = null");
    if (!effect || effect->magic != kEffectMagic || !effect->dispatcher || !effect->setParameter ||
        !effect->getParameter) {
        return effect;
    }
    theLog->keep(effect, {effect->dispatcher, effect->setParameter, effect->getParameter,
                          effect->processReplacing});
    effect->dispatcher = loggedDispatcher;
    effect->setParameter = loggedSetParameter;
    effect->getParameter = loggedGetParameter;
    if (effect->processReplacing) {
        effect->processReplacing = loggedProcess;
    }
    return effect;
}

} // namespace tvhost
