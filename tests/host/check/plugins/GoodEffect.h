// An effect that does all that hosts expect: gain, programs, chunks and an editor. Broken ones
// derive from it and break one thing.
#pragma once

#include "tests/host/plugins/TestEffect.h"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

struct _XDisplay;

class GoodEffect : public TestEffect {
public:
    static constexpr int kParameters = 4;
    static constexpr int kPrograms = 3;

    explicit GoodEffect(audioMasterCallback master);
    ~GoodEffect() override;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override;
    void setParameter(int index, float value) override;
    float getParameter(int index) override;
    void process(float** in, float** out, int frames) override;

    std::atomic<float>& parameterValue(int index);
    float gain() { return parameterValue(0); }
    int program() const { return program_; }
    bool isOn() const { return on_; }
    bool editorIsOpen() const { return display_ != nullptr; }
    unsigned long editorParent() const { return parent_; }
    _XDisplay* display() const { return display_; }

    // What the chunks hold; bank is all programs, else the current one.
    virtual std::vector<char> chunk(bool bank);
    virtual bool takeChunk(bool bank, const char* data, std::size_t size);

    virtual void openEditor(unsigned long parent);
    virtual void idleEditor() {}
    virtual void closeEditor();

    ERect rectangle{0, 0, 80, 120}; // top, left, bottom, right
    bool destroysWindow = true;

private:
    std::array<std::array<std::atomic<float>, kParameters>, kPrograms> values_;
    int program_ = 0;
    bool on_ = false;
    std::vector<char> given_;
    _XDisplay* display_ = nullptr;
    unsigned long parent_ = 0;
    unsigned long child_ = 0;
};
