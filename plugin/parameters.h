#pragma once

#include <cstdint>

namespace intake {

/// Numbers of those parameters whose change sets something off. The host counts from its record's
/// first field, which puts the reader's parameter 0 at its index 11.
enum ParameterNumber : int32_t {
    POST_ACTION = 17,
    SHARED_MEMORY_TYPE = 18,
    SHARED_MEMORY_VARIABLE = 19,
    AUTO_LOAD = 27,
    AUTO_LOAD_INTERVAL = 28,
};
constexpr int32_t FIRST_READER_PARAMETER = 11;

/// Action number of the push button "Load".
constexpr int32_t ACTION_LOAD = 0;

/// Registers the parameters that bind an instance to the data store. `flags` are the plugin's
/// getFlags and decide which of them the editor offers. Host's thread, PLUGIN_INIT only.
void registerBindingParameters(int32_t flags);

/// Registers the reader's own parameters. Host's thread, PLUGIN_INIT only.
void registerReaderParameters();

}  // namespace intake
