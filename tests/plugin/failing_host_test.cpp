#include <new>

#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

// Host calls that throw: nothing of it may reach the host again.

using Throw = void (*)();

void throwBadAlloc() {
    throw std::bad_alloc();
}

void throwNumber() {
    throw 42;
}

class FailingHost : public PluginTest, public testing::WithParamInterface<Throw> {
protected:
    void fail(const std::string& function) { host.onNextCall(function, GetParam()); }

    /// The line on the console when an entry point has failed.
    std::string failureLine(const std::string& entryPoint) {
        const std::string reason = GetParam() == throwBadAlloc ? ": std::bad_alloc" : "";
        return printed("Intake: " + entryPoint + " failed" + reason + "\n");
    }

    void expectReported(const std::string& entryPoint) {
        EXPECT_EQ(host.takeCalls().back(), "_lumoprintf(" + failureLine(entryPoint) + ")");
    }
};

INSTANTIATE_TEST_SUITE_P(Exceptions, FailingHost, testing::Values(throwBadAlloc, throwNumber),
                         [](const auto& each) {
                             return each.param == throwBadAlloc ? "BadAlloc" : "Number";
                         });

TEST_P(FailingHost, DuringRegistrationIsReported) {
    fail("evRegisterParameterFloat");
    PLUGIN_INIT(nullptr);
    expectReported("PLUGIN_INIT");
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 0U);
}

TEST_P(FailingHost, DuringBindIsReportedAndTheInitialisationIsPendingAllTheSame) {
    fail("RegisterField");
    PLUGIN_LOAD(record.get());
    expectReported("PLUGIN_LOAD");
    EXPECT_EQ(record->Magic, 9473);
    EXPECT_EQ(host.initPending, 1);
}

TEST_P(FailingHost, WhileAnInstanceIsMadeLeavesTheRecordWithoutOne) {
    fail("DataExpression");
    PLUGIN_LOAD(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(host.initPending, 1);
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 0U);
    PLUGIN_LOAD(record.get());
    EXPECT_NE(record->instance, nullptr);
}

TEST_P(FailingHost, WhileAnInstanceIsMadeByTheStateCheckIsNotTriedAgain) {
    record->Magic = 1;
    fail("DataExpression");
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(record->Magic, 9473);
}

TEST_P(FailingHost, DuringTheStateCheckIsReportedAndNotTriedAgain) {
    for (const int32_t magic : {1, 2}) {
        record->Magic = magic;
        fail("Register");
        PLUGIN_NEW_GEOM(record.get(), 0);
        expectReported("PLUGIN_NEW_GEOM");
        EXPECT_EQ(record->Magic, 9473);
        Intake* const instance = record->instance;
        PLUGIN_NEW_GEOM(record.get(), 0);
        EXPECT_EQ(record->instance, instance);
        PLUGIN_CLEANUP_FUNCTION(record.get());
    }
}

TEST_P(FailingHost, DuringThePendingInitialisationIsReported) {
    bindInstance();
    host.initPending = 1;
    fail("initCobalt");
    PLUGIN_AFTER_LOAD(record.get());
    expectReported("PLUGIN_AFTER_LOAD");
}

TEST_P(FailingHost, DuringALoadIsReported) {
    bindInstance();
    fail("_api__global_get_font_encoding");
    PLUGIN_EXEC_ACTION(record.get(), 0);
    expectReported("PLUGIN_EXEC_ACTION");
}

TEST_P(FailingHost, DuringADeliveryIsReportedAndTheNextAnswerComes) {
    params().queryMode = 3;
    bindInstance();
    for (const char* call : {"executeScript", "executeExtended"}) {
        for (int load = 0; load < 2; ++load) {
            PLUGIN_EXEC_ACTION(record.get(), 0);
            platform.threads.step();
        }
        host.takeCalls();
        fail(call);
        PLUGIN_EXEC_PER_FIELD(record.get());
        expectReported("PLUGIN_EXEC_PER_FIELD");
        PLUGIN_EXEC_PER_FIELD(record.get());
        EXPECT_EQ(host.takeCalls(),
                  Calls({"getInitCB()", R"(store.executeScript("READER_NUM_RECORDS=0;", 0))",
                         "_api__get_sceneid_local()", "IDataHandlerImpl::getCobalt(5, false)",
                         R"("".executeExtended(sceneStore, _api__lumo_send_command, 0))"}));
    }
}

TEST_P(FailingHost, DuringAMessageIsReported) {
    bindInstance();
    fail("onDispatcher");
    PLUGIN_DISPATCHER_CALLBACK(record.get(), 7, nullptr, nullptr);
    expectReported("PLUGIN_DISPATCHER_CALLBACK");
}

TEST_P(FailingHost, DuringAParameterChangeIsReported) {
    bindInstance();
    fail("parse");
    PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 17);
    expectReported("PLUGIN_CHANGED_CALLBACK");
}

TEST_P(FailingHost, DuringAStatusUpdateIsReported) {
    fail("evSendGuiParameterShow");
    PLUGIN_GUI_STATUS(record.get());
    expectReported("PLUGIN_GUI_STATUS");
}

TEST_P(FailingHost, WhoseConsoleFailsTooIsStillShielded) {
    fail("evSendGuiParameterShow");
    host.onCall("_lumoprintf", GetParam());
    PLUGIN_GUI_STATUS(record.get());
    EXPECT_EQ(host.takeCalls().back(), "_lumoprintf(" + failureLine("PLUGIN_GUI_STATUS") + ")");
}

/// A record whose texts the host has never set.
class NullTexts : public PluginTest {
protected:
    void SetUp() override { *record = HostRecord{}; }
};

TEST_F(NullTexts, AreEmptyTextsToEveryEntryPoint) {
    platform.xml.unreadable = "there is no such file";
    PLUGIN_LOAD(record.get());
    params().show_data = 1;
    PLUGIN_GUI_STATUS(record.get());
    for (int32_t index = 11; index <= 50; ++index) {
        PLUGIN_CHANGED_CALLBACK(record.get(), index);
    }
    for (int32_t queryMode = 0; queryMode <= 5; ++queryMode) {
        params().queryMode = queryMode;
        PLUGIN_EXEC_ACTION(record.get(), 0);
        platform.threads.step();
    }
    host.takeCalls();
    for (int32_t queryMode = 0; queryMode <= 5; ++queryMode) {
        host.initPending = 0;
        PLUGIN_EXEC_PER_FIELD(record.get());
        const bool isDatabase = queryMode < 2;  // the fake's has no records, but is there
        EXPECT_EQ(host.takeCalls(),
                  Calls({"getInitCB()", R"(store.findField("READER_CONSOLE", 0, 1))",
                         isDatabase ? R"(store.executeScript("", 0))"
                                    : R"(store.executeScript("READER_NUM_RECORDS=0;", 0))",
                         "_api__get_sceneid_local()", "IDataHandlerImpl::getCobalt(5, false)",
                         R"("".executeExtended(sceneStore, _api__lumo_send_command, 0))"}));
    }
    PLUGIN_CLEANUP_FUNCTION(record.get());
}

TEST_F(NullTexts, AChosenFieldIsRegisteredWithoutACopy) {
    PLUGIN_LOAD(record.get());
    host.takeCalls();
    std::string name = "Results";
    PLUGIN_DISPATCHER_CALLBACK(record.get(), 0x4649454C, name.data(), nullptr);
    EXPECT_EQ(host.takeCalls()[0], "Register(null, 1)");
}

TEST_F(NullTexts, InSharedMemoryModeLeaveTheVariableUnnamed) {
    params().mode = 4;
    PLUGIN_LOAD(record.get());
    host.takeCalls();
    record->instance->executeResult(true, "a", "");
    EXPECT_EQ(host.takeCalls(),
              Calls({"_api__object_valid(101)", "_api__get_sceneid_local()",
                     "IDataHandlerImpl::getCobalt(5, false)",
                     R"("".executeExtended(sceneStore, _api__lumo_send_command, 0))"}));
}

TEST_F(NullTexts, AParameterUpdateSkipsThem) {
    PLUGIN_LOAD(record.get());
    host.takeCalls();
    record->instance->onParameterUpdate("FILENAME |a| SHEET |b|");
    EXPECT_EQ(params().filename, nullptr);
    EXPECT_EQ(params().sheet, nullptr);
    EXPECT_EQ(host.takeCalls(), Calls({"evSendGuiRefresh()"}));
}

}  // namespace
}  // namespace intake
