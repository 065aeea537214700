// The plug-ins of these tests.
#pragma once

#include "host/plugin/PluginModule.h"

#include <memory>
#include <string>

// The file of one of the plug-ins built from plugins/.
inline std::string testPlugin(const std::string& name) {
    return std::string(TVHOST_TEST_PLUGINS "/") + name + ".so";
}

inline std::shared_ptr<const tvhost::PluginModule> loadTestPlugin(const std::string& name) {
    return std::make_shared<const tvhost::PluginModule>(testPlugin(name));
}
