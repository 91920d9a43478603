#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

class ResultExecution : public PluginTest {
protected:
    void SetUp() override {
        bindInstance();
        TestRecord::set(params().postAction, "Go=1;");
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 17);
        host.takeCalls();
    }

    Calls execute(bool success, const std::string& result, const std::string& error) {
        record->instance->executeResult(success, result, error);
        return host.takeCalls();
    }

    /// These calls, then those of the post-update action.
    static Calls andPostAction(Calls calls) {
        calls.insert(calls.end(),
                     {"_api__get_sceneid_local()", "IDataHandlerImpl::getCobalt(5, false)",
                      R"("Go=1;".executeExtended(sceneStore, _api__lumo_send_command, 0))"});
        return calls;
    }
};

TEST_F(ResultExecution, OfASuccessExecutesTheScriptAndThePostUpdateAction) {
    EXPECT_EQ(execute(true, "Table[0]={{a=\"\"1\"\";};};", ""),
              andPostAction({R"(store.executeScript("Table[0]={{a=""1"";};};", 0))"}));
}

TEST_F(ResultExecution, OfAFailureExecutesTheFallbackAndThePostUpdateAction) {
    EXPECT_EQ(execute(false, "ignored", "No such file.\n"),
              andPostAction({R"(store.executeScript("READER_NUM_RECORDS=0;", 0))"}));
}

TEST_F(ResultExecution, IsTheSameInEveryModeButSharedMemory) {
    for (const int32_t mode : {0, 1, 2, 3, 5, -1}) {
        params().mode = mode;
        EXPECT_EQ(execute(true, "A=1;", ""), andPostAction({R"(store.executeScript("A=1;", 0))"}));
        EXPECT_EQ(execute(false, "", "e"),
                  andPostAction({R"(store.executeScript("READER_NUM_RECORDS=0;", 0))"}));
    }
}

TEST_F(ResultExecution, WithShowDataOffWritesNoConsoleVariableEvenIfOneExists) {
    host.store.add("READER_CONSOLE");
    EXPECT_EQ(execute(true, "A=1;", ""), andPostAction({R"(store.executeScript("A=1;", 0))"}));
    EXPECT_EQ(execute(false, "", "e"),
              andPostAction({R"(store.executeScript("READER_NUM_RECORDS=0;", 0))"}));
}

TEST_F(ResultExecution, WithShowDataOnWritesTheResultToTheConsoleVariableFirst) {
    params().show_data = 1;
    host.store.add("READER_CONSOLE");
    EXPECT_EQ(
        execute(true, "A=1;", ""),
        andPostAction({R"(store.findField("READER_CONSOLE", 0, 1))",
                       R"(READER_CONSOLE.setValue("A=1;"))", R"(store.executeScript("A=1;", 0))"}));
}

TEST_F(ResultExecution, WithShowDataOnAFailureShowsFallbackAndErrorInTheConsoleVariable) {
    params().show_data = 1;
    host.store.add("READER_CONSOLE");
    EXPECT_EQ(execute(false, "ignored", "No such file.\n"),
              andPostAction({R"(store.findField("READER_CONSOLE", 0, 1))",
                             R"(READER_CONSOLE.setValue("READER_NUM_RECORDS=0;No such file.\n"))",
                             R"(store.executeScript("READER_NUM_RECORDS=0;", 0))"}));
}

TEST_F(ResultExecution, WithoutAConsoleVariableNothingIsWritten) {
    params().show_data = 1;
    EXPECT_EQ(execute(true, "A=1;", ""),
              andPostAction({R"(store.findField("READER_CONSOLE", 0, 1))",
                             R"(store.executeScript("A=1;", 0))"}));
}

TEST_F(ResultExecution, ThePrefixStandsBeforeTheFallbackAndTheConsoleVariable) {
    params().show_data = 1;
    TestRecord::set(params().varsPrefix, "A_");
    host.store.add("A_READER_CONSOLE");
    EXPECT_EQ(execute(false, "", "Timed out.\n"),
              andPostAction({R"(store.findField("A_READER_CONSOLE", 0, 1))",
                             R"(A_READER_CONSOLE.setValue("A_READER_NUM_RECORDS=0;Timed out.\n"))",
                             R"(store.executeScript("A_READER_NUM_RECORDS=0;", 0))"}));
}

TEST_F(ResultExecution, ThePostUpdateActionRunsOncePerAnswerAlsoForFailedOnes) {
    const std::string action = R"("Go=1;".executeExtended(sceneStore, _api__lumo_send_command, 0))";
    for (const bool success : {true, false, true}) {
        const Calls calls = execute(success, "A=1;", "e");
        EXPECT_EQ(std::count(calls.begin(), calls.end(), action), 1);
        EXPECT_EQ(calls.back(), action);
    }
}

TEST_F(ResultExecution, TheLocalSceneIsAskedForWithEveryAnswer) {
    host.localScene = 8;
    const Calls calls = execute(true, "A=1;", "");
    EXPECT_EQ(calls[2], "IDataHandlerImpl::getCobalt(8, false)");
}

TEST_F(ResultExecution, AnEditedPostUpdateActionTakesEffectWithoutALoad) {
    TestRecord::set(params().postAction, "Stop=1;");
    PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 17);
    EXPECT_EQ(host.takeCalls(), Calls({"setHostField(store, field)", R"(parse("Stop=1;"))"}));
    EXPECT_EQ(execute(true, "A=1;", "").back(),
              R"("Stop=1;".executeExtended(sceneStore, _api__lumo_send_command, 0))");
}

TEST_F(ResultExecution, MacrosOfThePostUpdateActionAreAskedOfTheInstance) {
    host.macroText = "Stage";
    std::string answer;
    host.onCall("executeExtended", [&] { answer = host.macroSource->queryVariable("SCENE"); });
    const Calls calls = execute(true, "A=1;", "");
    EXPECT_EQ(calls.back(), R"(parseMacro("SCENE"))");
    EXPECT_EQ(answer, "Stage");
}

TEST_F(ResultExecution, AnExpressionThatOutlivesItsInstanceAsksNobody) {
    execute(true, "A=1;", "");
    ASSERT_NE(host.macroSource, nullptr);
    PLUGIN_CLEANUP_FUNCTION(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"setVariableQuery(null)", "~IDataHandler()"}));
}

class SharedMemory : public ResultExecution {
protected:
    void SetUp() override {
        ResultExecution::SetUp();
        params().mode = 4;
    }

    /// Binds the shared memory and returns the calls that this took.
    Calls changed(int32_t number) {
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + number);
        return host.takeCalls();
    }
};

constexpr int32_t SHMTYPE = 18;
constexpr int32_t SHMVAR = 19;

TEST_F(SharedMemory, ReceivesTheResultAndNothingIsExecuted) {
    changed(SHMVAR);
    EXPECT_EQ(execute(true, "a|b|", ""),
              andPostAction({"_api__object_valid(101)",
                             R"(_api__shared_script_memory_set_value(101, "VAR", "a|b|"))"}));
    EXPECT_EQ(host.sharedMemories[101]["VAR"], "a|b|");
}

TEST_F(SharedMemory, AFailureWritesTheResultThoughItIsEmptyAndExecutesNoFallback) {
    changed(SHMVAR);
    host.sharedMemories[101]["VAR"] = "old";
    EXPECT_EQ(execute(false, "", "Timed out.\n"),
              andPostAction({"_api__object_valid(101)",
                             R"(_api__shared_script_memory_set_value(101, "VAR", ""))"}));
    EXPECT_EQ(host.sharedMemories[101]["VAR"], "");
}

TEST_F(SharedMemory, AFailureWritesAsMuchOfTheResultAsThereIs) {
    changed(SHMVAR);
    EXPECT_EQ(execute(false, "a|b", "Timed out.\n"),
              andPostAction({"_api__object_valid(101)",
                             R"(_api__shared_script_memory_set_value(101, "VAR", "a|b"))"}));
}

TEST_F(SharedMemory, AFailureStillShowsInTheConsoleVariable) {
    params().show_data = 1;
    host.store.add("READER_CONSOLE");
    changed(SHMVAR);
    EXPECT_EQ(execute(false, "", "e"),
              andPostAction({R"(store.findField("READER_CONSOLE", 0, 1))",
                             R"(READER_CONSOLE.setValue("READER_NUM_RECORDS=0;e"))",
                             "_api__object_valid(101)",
                             R"(_api__shared_script_memory_set_value(101, "VAR", ""))"}));
}

TEST_F(SharedMemory, SwitchingTheModeAfterBindingDoesNotBindIt) {
    EXPECT_EQ(changed(16), Calls{});
    EXPECT_EQ(execute(true, "a|b|", ""), andPostAction({"_api__object_valid(-1)"}));
    EXPECT_TRUE(host.sharedMemories.empty());
}

TEST_F(SharedMemory, IsBoundByAChangeOfItsTypeOrItsNameOrByTheNextBind) {
    const std::vector<std::function<void()>> ways{
        [&] { changed(SHMTYPE); }, [&] { changed(SHMVAR); }, [&] { PLUGIN_LOAD(record.get()); }};
    for (const auto& way : ways) {
        params().mode = 0;
        PLUGIN_CLEANUP_FUNCTION(record.get());
        host.sharedMemories.clear();
        bindInstance();
        params().mode = 4;
        way();
        execute(true, "a|b|", "");
        EXPECT_EQ(host.sharedMemories[101]["VAR"], "a|b|");
    }
}

TEST_F(SharedMemory, IsTakenFromTheLocalSceneTheHostOrItsNetwork) {
    host.sharedMemories = {{101, {{"VAR", ""}}}, {102, {{"VAR", ""}}}, {103, {{"VAR", ""}}}};
    params().shmtype = 0;
    EXPECT_EQ(changed(SHMTYPE),
              Calls({"_api__get_sceneid_local()", "_api__scene_get_shared_script_memory(5)",
                     R"(_api__shared_script_memory_has_key(101, "VAR"))"}));
    params().shmtype = 1;
    EXPECT_EQ(changed(SHMTYPE), Calls({"_api__global_get_shared_script_memory()",
                                       R"(_api__shared_script_memory_has_key(102, "VAR"))"}));
    params().shmtype = 2;
    EXPECT_EQ(changed(SHMTYPE), Calls({"_api__global_get_distributed_shared_script_memory()",
                                       R"(_api__shared_script_memory_has_key(103, "VAR"))"}));
}

TEST_F(SharedMemory, OfAnyOtherTypeIsNone) {
    changed(SHMTYPE);
    for (const int32_t type : {3, -1}) {
        params().shmtype = type;
        changed(SHMTYPE);
        EXPECT_EQ(execute(true, "a", ""), andPostAction({"_api__object_valid(-1)"}));
    }
}

TEST_F(SharedMemory, AVariableThatDoesNotExistYetIsCreated) {
    const Calls calls = changed(SHMVAR);
    EXPECT_EQ(Calls(calls.begin() + 2, calls.end()),
              Calls({R"(_api__shared_script_memory_has_key(101, "VAR"))",
                     R"(_api__shared_script_memory_create_key(101, "VAR"))",
                     R"(_api__shared_script_memory_has_key(101, "VAR"))"}));
}

TEST_F(SharedMemory, AnEmptyNameKeepsTheOldOne) {
    changed(SHMVAR);
    TestRecord::set(params().shmvar, "");
    EXPECT_EQ(changed(SHMVAR),
              Calls({"_api__get_sceneid_local()", "_api__scene_get_shared_script_memory(5)"}));
    execute(true, "a", "");
    EXPECT_EQ(host.sharedMemories[101]["VAR"], "a");
}

TEST_F(SharedMemory, WithoutANameNothingIsWritten) {
    TestRecord::set(params().shmvar, "");
    changed(SHMTYPE);
    EXPECT_EQ(execute(true, "a", ""), andPostAction({"_api__object_valid(101)"}));
}

TEST_F(SharedMemory, ThatHasGoneIsSkipped) {
    changed(SHMVAR);
    host.invalidObjects = {101};
    EXPECT_EQ(execute(true, "a", ""), andPostAction({"_api__object_valid(101)"}));
    EXPECT_EQ(host.sharedMemories[101]["VAR"], "");
}

class SharedMemoryReports : public PluginTest {
protected:
    SharedMemoryBinding binding;
};

TEST_F(SharedMemoryReports, ANameThatExistsOrIsCreatedIsDone) {
    binding.setMemory(0);
    EXPECT_EQ(binding.setName("VAR"), 0);
    EXPECT_EQ(binding.setName("VAR"), 0);
    EXPECT_EQ(binding.write("a"), 0);
}

TEST_F(SharedMemoryReports, AVariableThatCannotBeCreatedIsMinusOne) {
    host.refusesKeys = true;
    binding.setMemory(0);
    EXPECT_EQ(binding.setName("VAR"), -1);
}

TEST_F(SharedMemoryReports, AnEmptyNameIsMinusTwo) {
    binding.setMemory(0);
    EXPECT_EQ(binding.setName(""), -2);
    EXPECT_EQ(binding.write("a"), -2);
}

TEST_F(SharedMemoryReports, AMissingMemoryIsMinusOneEvenWithoutAName) {
    EXPECT_EQ(binding.write("a"), -1);
    binding.setMemory(7);
    EXPECT_EQ(binding.write("a"), -1);
}

}  // namespace
}  // namespace intake
