#pragma once

#include "host/cobalt.h"
#include "workbench/cobalt/Store.h"
#include "workbench/trace/Trace.h"

namespace cobaltlib {

/// A field of the store as the plugin sees it. Owned by its SceneStore; host's thread only.
class StoreField final : public DataField {
public:
    StoreField(cobalt::Field& field, tracing::Trace& trace) : field_(field), trace_(trace) {}

    void setValue(const char* text) override {
        trace_.call("DataField::setValue", text);
        field_.setText(text);
    }

    const std::string& name() const { return field_.name(); }

private:
    cobalt::Field& field_;
    tracing::Trace& trace_;
};

}  // namespace cobaltlib
