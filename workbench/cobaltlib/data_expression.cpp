// DataExpression: post-update actions, over the store core's expressions. An expression that does
// not parse or fails is reported on the console.

#include "host/cobalt.h"
#include "workbench/cobalt/Expression.h"
#include "workbench/cobaltlib/Library.h"
#include "workbench/cobaltlib/SceneStore.h"
#include "workbench/cobaltlib/library_output.h"

namespace {

struct Implementation {
    cobalt::Expression expression;
    DataVariableQuery* query = nullptr;
    std::string rejected;  // the text that was reported last: binding parses the same text twice
};

Implementation& of(void* implementation) {
    return *static_cast<Implementation*>(implementation);
}

tracing::Trace& trace() {
    return cobaltlib::Library::current().trace;
}

cobalt::MacroQuery macroQuery(DataVariableQuery* query) {
    return [query](const std::string& macro) -> std::optional<std::string> {
        const char* text = query != nullptr ? query->queryVariable(macro.c_str()) : nullptr;
        return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
    };
}

cobalt::CommandFunction commandSender(DataCommandFunction command) {
    return [command](const std::string& text) {
        const char* answer = nullptr;
        if (command != nullptr) command(text.c_str(), &answer);
        return std::string(answer != nullptr ? answer : "");
    };
}

}  // namespace

DataVariableQuery::~DataVariableQuery() = default;

DataExpression::DataExpression() : implementation_(new Implementation) {}
DataExpression::~DataExpression() {
    delete static_cast<Implementation*>(implementation_);
}

void DataExpression::setVariableQuery(DataVariableQuery* query) {
    trace().call("DataExpression::setVariableQuery",
                 tracing::Bare{query != nullptr ? "query" : "null"});
    of(implementation_).query = query;
}

// Every name is read in the scene's one store, so the host field makes no difference here.
void DataExpression::setHostField(Cobalt* store, DataField* field) {
    const auto* known = dynamic_cast<cobaltlib::StoreField*>(field);
    trace().call("DataExpression::setHostField",
                 tracing::Bare{store != nullptr ? "Cobalt" : "null"},
                 tracing::Bare{known != nullptr ? std::string_view(known->name()) : "null"});
}

int32_t DataExpression::parse(const char* text) {
    trace().call("DataExpression::parse", text);
    Implementation& self = of(implementation_);
    const auto error = self.expression.parse(text);
    if (error && self.rejected != text)
        cobaltlib::report("The action \"" + std::string(text) + "\" does not parse", *error);
    self.rejected = error ? text : "";
    return error ? 0 : 1;
}

int32_t DataExpression::executeExtended(Cobalt* store, DataCommandFunction command, int32_t flags) {
    const bool known = command == &_api__lumo_send_command;
    trace().call("DataExpression::executeExtended",
                 tracing::Bare{store != nullptr ? "Cobalt" : "null"},
                 tracing::Bare{known ? "_api__lumo_send_command" : "function"}, flags);
    auto* scene = dynamic_cast<cobaltlib::SceneStore*>(store);
    if (scene == nullptr) return 0;
    Implementation& self = of(implementation_);
    const auto error =
        self.expression.execute(scene->core(), commandSender(command), macroQuery(self.query));
    if (error) cobaltlib::report("The action failed", *error);
    if (scene->observer() != nullptr) scene->observer()->actionDone(error ? &*error : nullptr);
    return error ? 0 : 1;
}
