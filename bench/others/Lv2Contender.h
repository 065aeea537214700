// A delay that comes as an LV2 plug-in.
#pragma once

#include "bench/others/Contender.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <lilv/lilv.h>

class Lv2Contender : public Contender {
public:
    // `controls`: values by symbol; the others stay at their defaults. Throws std::runtime_error
    // when the plug-in isn't installed, lacks a control or can't be made.
    Lv2Contender(const std::string& uri, const std::map<std::string, float>& controls);
    ~Lv2Contender() override;

    void run(const float* const* inputs, float* const* outputs, int frames) override;

private:
    void connectPorts(const LilvPlugin* plugin, const std::map<std::string, float>& controls);

    LilvInstance* instance_ = nullptr;
    std::vector<float> values_; // of all ports, by index
    std::vector<std::uint32_t> inputs_;
    std::vector<std::uint32_t> outputs_;
    std::vector<std::unique_ptr<std::uint64_t[]>> events_; // buffers that stay empty
};
