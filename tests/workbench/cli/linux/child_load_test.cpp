#include "workbench/cli/child_load.h"

#include <gtest/gtest.h>

#include "workbench/cli/parameter_values.h"

namespace {

using lumo::Parameter;
using lumo::ParameterKind;

class ChildLoad : public testing::Test {
protected:
    ChildLoad() {
        add(ParameterKind::Bool, "autoLoad");
        add(ParameterKind::Radio, "logLevel").entries = {"FATAL", "ERROR", "WARNING"};
        add(ParameterKind::Radio, "mode").entries = {"a", "b", "c", "d", "Shared Memory"};
        for (const char* const name : {"postAction", "shmvar", "xpath"})
            add(ParameterKind::String, name).capacity = 80;
        for (const Parameter& parameter : parameters_)
            table_.add(parameter);
    }

    Parameter& add(ParameterKind kind, const char* name) {
        parameters_.emplace_back();
        parameters_.back().kind = kind;
        parameters_.back().name = name;
        return parameters_.back();
    }

    workbench::SceneChild childWith(
        const std::vector<std::pair<const char*, const char*>>& values) {
        lumo::Record record(table_);
        for (const auto& [name, value] : values)
            workbench::setParameter(table_, record, name, value);
        return workbench::childThatLoads(table_, record);
    }

    std::vector<Parameter> parameters_;
    lumo::ParameterTable table_;
};

}  // namespace

TEST_F(ChildLoad, LoadsOnceAndDoesNothingElse) {
    const auto child = childWith({{"autoLoad", "1"},
                                  {"logLevel", "WARNING"},
                                  {"postAction", "command(\"X\")"},
                                  {"xpath", "rows"}});
    EXPECT_EQ(child.command, "load");
    EXPECT_EQ(child.arguments, (std::vector<std::string>{"--out", "script"}));
    for (const char* const value :
         {R"("autoLoad": 0)", R"("logLevel": 0)", R"("postAction": "")", R"("xpath": "rows")"})
        EXPECT_NE(child.scene.find(value), std::string::npos) << child.scene;
}

TEST_F(ChildLoad, BindsASharedMemory) {
    const auto child = childWith({{"mode", "Shared Memory"}, {"shmvar", "IDS"}});
    EXPECT_EQ(child.arguments,
              (std::vector<std::string>{"--out", "script", "--set", "shmvar=IDS"}));
}
