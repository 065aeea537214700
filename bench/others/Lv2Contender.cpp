#include "bench/others/Lv2Contender.h"

#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t kEventBytes = 65536;

// Numbers for the names that LV2 speaks by, the same for all plug-ins of the process.
LV2_URID mapUri(LV2_URID_Map_Handle, const char* uri) {
    static auto* const numbers = new std::map<std::string, LV2_URID>;
    return numbers->emplace(uri, static_cast<LV2_URID>(numbers->size() + 1)).first->second;
}

LilvWorld* world() {
    static LilvWorld* const loaded = [] {
        LilvWorld* const made = lilv_world_new();
        lilv_world_load_all(made);
        return made;
    }();
    return loaded;
}

class Node {
public:
    explicit Node(const char* uri) : node_(lilv_new_uri(world(), uri)) {}
    ~Node() { lilv_node_free(node_); }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    operator const LilvNode*() const { return node_; }

private:
    LilvNode* node_;
};

const LV2_Feature* const* features() {
    static LV2_URID_Map map{nullptr, mapUri};
    static const std::int32_t longest = kLongestBlock;
    static const LV2_Options_Option options[] = {
        {LV2_OPTIONS_INSTANCE, 0, mapUri(nullptr, LV2_BUF_SIZE__maxBlockLength), sizeof(longest),
         mapUri(nullptr, LV2_ATOM__Int), &longest},
        {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
    static const LV2_Feature mapFeature{LV2_URID__map, &map};
    static const LV2_Feature optionsFeature{LV2_OPTIONS__options,
                                            const_cast<LV2_Options_Option*>(options)};
    static const LV2_Feature* const all[] = {&mapFeature, &optionsFeature, nullptr};
    return all;
}

} // namespace

Lv2Contender::Lv2Contender(const std::string& uri, const std::map<std::string, float>& controls) {
    const LilvPlugin* const plugin =
        lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world()), Node(uri.c_str()));
    if (plugin == nullptr) {
        throw std::runtime_error(uri + " isn't installed");
    }
    instance_ = lilv_plugin_instantiate(plugin, kContenderRate, features());
    if (instance_ == nullptr) {
        throw std::runtime_error(uri + " can't be made");
    }
    connectPorts(plugin, controls);
    lilv_instance_activate(instance_);
}

Lv2Contender::~Lv2Contender() {
    if (instance_ != nullptr) {
        lilv_instance_deactivate(instance_);
        lilv_instance_free(instance_);
    }
}

void Lv2Contender::run(const float* const* inputs, float* const* outputs, int frames) {
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        lilv_instance_connect_port(instance_, inputs_[i], const_cast<float*>(inputs[i]));
    }
    for (std::size_t i = 0; i < outputs_.size(); ++i) {
        lilv_instance_connect_port(instance_, outputs_[i], outputs[i]);
    }
    for (const auto& events : events_) {
        auto* const sequence = reinterpret_cast<LV2_Atom_Sequence*>(events.get());
        sequence->atom = {sizeof(LV2_Atom_Sequence_Body), mapUri(nullptr, LV2_ATOM__Sequence)};
        sequence->body = {0, 0};
    }
    lilv_instance_run(instance_, static_cast<std::uint32_t>(frames));
}

void Lv2Contender::connectPorts(const LilvPlugin* plugin,
                                const std::map<std::string, float>& controls) {
    const Node audio(LV2_CORE__AudioPort);
    const Node control(LV2_CORE__ControlPort);
    const Node input(LV2_CORE__InputPort);
    const std::uint32_t ports = lilv_plugin_get_num_ports(plugin);
    std::vector<float> lowest(ports);
    std::vector<float> highest(ports);
    values_.resize(ports);
    lilv_plugin_get_port_ranges_float(plugin, lowest.data(), highest.data(), values_.data());
    std::size_t found = 0;
    for (std::uint32_t index = 0; index < ports; ++index) {
        const LilvPort* const port = lilv_plugin_get_port_by_index(plugin, index);
        if (lilv_port_is_a(plugin, port, audio)) {
            (lilv_port_is_a(plugin, port, input) ? inputs_ : outputs_).push_back(index);
        } else if (lilv_port_is_a(plugin, port, control)) {
            const auto wanted =
                controls.find(lilv_node_as_string(lilv_port_get_symbol(plugin, port)));
            if (wanted != controls.end()) {
                values_[index] = wanted->second;
                ++found;
            } else if (std::isnan(values_[index])) {
                values_[index] = 0.0f;
            }
            lilv_instance_connect_port(instance_, index, &values_[index]);
        } else {
            events_.push_back(std::make_unique<std::uint64_t[]>(kEventBytes / 8));
            lilv_instance_connect_port(instance_, index, events_.back().get());
        }
    }
    if (found != controls.size() || inputs_.size() != 2 || outputs_.size() != 2) {
        throw std::runtime_error(std::string(lilv_instance_get_uri(instance_)) +
                                 " has other controls or channels than expected");
    }
}
