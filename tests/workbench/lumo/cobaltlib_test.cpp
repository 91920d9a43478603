// The data store's client library, called as a plugin calls it.

#include <gtest/gtest.h>

#include "host/cobalt.h"
#include "host/lumo.h"
#include "workbench/lumo/Host.h"

using lumo::Host;

namespace {

struct CobaltLib : testing::Test {
    Host host;
    Cobalt* store = IDataHandlerImpl::getCobalt(host.scene, false);

    std::string textOf(const char* name) { return host.store.core().find(name)->value().text(); }
};

class Handler final : public lumoDataHandler {
public:
    const char* getName() override { return "Handler"; }
    const char* getFolder() override { return "Tests"; }
    int32_t getType() override { return 2; }
    const char* getVersion() override { return "1"; }
    int32_t getFlags() override { return 0; }
    const char* getInfo() override { return ""; }
    void registerParameters() override {}
    void syncParameters() override {}
    void initialize() override {}
    void cleanup() override {}
    using lumoDataHandler::onDataChange;
    void onDataChange(const char* name, const char* value) override {
        told = std::string(name) + "=" + value;
    }
    void onParameterChanged(int32_t) override {}
    void onExecAction(int32_t, void*) override {}
    void onGuiStatus() override {}
    void onExecPerField() override {}

    std::string told;
};

std::string printed;

int32_t keepFormat(const char* format, ...) {
    printed = format;
    return 0;
}

class Macros final : public DataVariableQuery {
public:
    const char* queryVariable(const char* macro) override {
        return std::string(macro) == "Side" ? "home" : nullptr;
    }
};

}  // namespace

TEST_F(CobaltLib, AnotherScenesStoreIsNone) {
    EXPECT_NE(store, nullptr);
    EXPECT_EQ(IDataHandlerImpl::getCobalt(99, true), nullptr);
}

TEST_F(CobaltLib, AFieldIsFoundOnlyWhenItExists) {
    EXPECT_EQ(store->findField("Score", 0, 1), nullptr);
    host.store.core().define("Score");
    DataField* field = store->findField("Score", 0, 1);
    ASSERT_NE(field, nullptr);
    field->setValue("2;1");
    EXPECT_EQ(textOf("Score"), "2;1");
}

TEST_F(CobaltLib, AScriptIsExecuted) {
    EXPECT_EQ(store->executeScript("Score=3;", 0), 1);
    EXPECT_EQ(textOf("Score"), "3");
}

TEST_F(CobaltLib, AScriptThatDoesNotParseChangesNothingAndIsReportedOnTheConsole) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(store->executeScript("A=1;\nB", 0), 0);
    const std::string console = testing::internal::GetCapturedStderr();
    EXPECT_EQ(host.store.core().find("A"), nullptr);
    EXPECT_TRUE(console.starts_with("The data store could not execute the script: line 2, column "))
        << console;
}

TEST_F(CobaltLib, AHandlerIsBoundToTheFieldThatItRegistered) {
    Handler handler;
    EXPECT_EQ(handler.getCobalt(), store);
    EXPECT_EQ(handler.getField(), nullptr);
    host.store.core().define("Score");
    handler.RegisterField("Score", 0);
    EXPECT_EQ(handler.getField(), store->findField("Score", 0, 1));
    handler.Unregister();
    EXPECT_EQ(handler.getField(), nullptr);
}

TEST_F(CobaltLib, ARefreshTellsTheHandlerItsValue) {
    Handler handler;
    host.store.core().define("Score").setText("4");
    handler.Register("Score", 1);
    handler.refresh();
    EXPECT_EQ(handler.told, "Score=4");
}

TEST_F(CobaltLib, AnExpressionIsParsedOnceAndExecutedManyTimes) {
    DataExpression expression;
    ASSERT_EQ(store->executeScript("A=1;", 0), 1);
    ASSERT_EQ(expression.parse("A=A+2"), 1);
    EXPECT_EQ(expression.executeExtended(store, nullptr, 0), 1);
    EXPECT_EQ(expression.executeExtended(store, nullptr, 0), 1);
    EXPECT_EQ(textOf("A"), "5");
}

TEST_F(CobaltLib, AnExpressionAsksForTheMacrosThatTheStoreDoesNotKnow) {
    Macros macros;
    DataExpression expression;
    expression.setVariableQuery(&macros);
    ASSERT_EQ(expression.parse("Team=Side"), 1);
    EXPECT_EQ(expression.executeExtended(store, nullptr, 0), 1);
    EXPECT_EQ(textOf("Team"), "home");
}

TEST_F(CobaltLib, AnExpressionSendsCommandsThroughTheGivenFunction) {
    DataExpression expression;
    ASSERT_EQ(expression.parse("command(\"\"play\"\")"), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(expression.executeExtended(store, &_api__lumo_send_command, 0), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Host command: play\n");
}

TEST_F(CobaltLib, AnExpressionThatDoesNotParseIsReportedOnceAndThenEmpty) {
    DataExpression expression;
    testing::internal::CaptureStderr();
    EXPECT_EQ(expression.parse("A=("), 0);
    EXPECT_EQ(expression.parse("A=("), 0);
    EXPECT_EQ(expression.executeExtended(store, nullptr, 0), 1);
    const std::string console = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(console.starts_with("The action \"A=(\" does not parse: line 1, column "))
        << console;
    EXPECT_EQ(console.find('\n'), console.size() - 1) << console;
    EXPECT_TRUE(host.store.core().empty());
}

TEST_F(CobaltLib, AnExpressionThatFailsIsReported) {
    DataExpression expression;
    ASSERT_EQ(expression.parse("A=1/0"), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(expression.executeExtended(store, nullptr, 0), 0);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("The action failed: line 1, "));
}

TEST_F(CobaltLib, APendingInitialisationIsRemembered) {
    EXPECT_EQ(getInitCB(), 0);
    setInitCB(1);
    EXPECT_EQ(getInitCB(), 1);
}

TEST_F(CobaltLib, PrintsThroughTheFunctionThatWasSet) {
    DataSetPrintfFunction(&keepFormat);
    store->executeScript("broken", 0);
    EXPECT_EQ(printed, "%s\n");
}

TEST_F(CobaltLib, TheTraceNamesObjectsAndFunctions) {
    DataExpression expression;
    host.store.core().define("Own");
    host.trace.start();
    DataSetPrintfFunction(_lumoprintf);
    expression.setHostField(store, store->findField("Own", 0, 1));
    expression.parse("");
    expression.executeExtended(store, &_api__lumo_send_command, 0);
    EXPECT_EQ(host.trace.text(),
              "DataSetPrintfFunction(_lumoprintf)\n"
              "Cobalt::findField(\"Own\", 0, 1)\n"
              "DataExpression::setHostField(Cobalt, Own)\n"
              "DataExpression::parse(\"\")\n"
              "DataExpression::executeExtended(Cobalt, _api__lumo_send_command, 0)\n");
}
