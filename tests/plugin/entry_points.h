#pragma once

#include <cstdint>

#include "plugin/HostRecord.h"

// What the plugin exports, as the host declares it for itself.

extern "C" {
void PLUGIN_INIT(void* hostValues);
void PLUGIN_INIT_FUNCTION(intake::HostRecord* record);
void PLUGIN_LOAD(intake::HostRecord* record);
void PLUGIN_AFTER_LOAD(intake::HostRecord* record);
void PLUGIN_CLEANUP_FUNCTION(intake::HostRecord* record);
void PLUGIN_EXEC_ACTION(intake::HostRecord* record, int32_t action);
void PLUGIN_EXEC_PER_FIELD(intake::HostRecord* record);
void PLUGIN_DISPATCHER_CALLBACK(intake::HostRecord* record, int32_t code, void* data, void** out);
void PLUGIN_CHANGED_CALLBACK(intake::HostRecord* record, int32_t hostIndex);
void PLUGIN_GUI_STATUS(intake::HostRecord* record);
void PLUGIN_NEW_GEOM(intake::HostRecord* record, int32_t reason);
}
