#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

constexpr int32_t FIEL = 0x4649454C;
constexpr int32_t INIT = 0x494E4954;
constexpr int32_t UDAT = 0x55444154;

/// A plugin of another name, as the library's own that hold a container of fields.
class NamedIntake : public Intake {
public:
    explicit NamedIntake(const char* name) : name_(name) {}
    const char* getName() override { return name_; }

private:
    const char* name_;
};

class HostEvents : public PluginTest {
protected:
    void placeInstance(const char* name) {
        record->instance = new NamedIntake(name);
        host.takeCalls();
    }

    void dispatch(int32_t code, const char* text = nullptr) {
        std::string data = text == nullptr ? "" : text;
        PLUGIN_DISPATCHER_CALLBACK(record.get(), code, text == nullptr ? nullptr : data.data(),
                                   &out);
    }

    std::string forwarded(int32_t code, const char* text = nullptr) {
        return "onDispatcher(" + std::to_string(code) + ", " + printed(text) + ")";
    }

    void* out = nullptr;
};

using Dispatcher = HostEvents;

TEST_F(Dispatcher, AChosenFieldIsCopiedRegisteredAndForwarded) {
    bindInstance();
    dispatch(FIEL, "Results");
    EXPECT_STREQ(record->FieldName, "Results");
    EXPECT_EQ(host.takeCalls(), Calls({R"(Register("Results", 1))", forwarded(FIEL, "Results")}));
}

TEST_F(Dispatcher, AChosenFieldMayBeTheRecordsOwnTextOrNone) {
    bindInstance();
    TestRecord::set(record->FieldName, "Results");
    PLUGIN_DISPATCHER_CALLBACK(record.get(), FIEL, record->FieldName, &out);
    dispatch(FIEL, nullptr);
    EXPECT_EQ(host.takeCalls(), Calls({R"(Register("Results", 1))", forwarded(FIEL, "Results"),
                                       R"(Register("Results", 1))", forwarded(FIEL)}));
}

TEST_F(Dispatcher, AChosenFieldBindsWhereNoInstanceExists) {
    dispatch(FIEL, "Results");
    ASSERT_NE(record->instance, nullptr);
    EXPECT_STREQ(record->FieldName, "Results");
    const Calls calls = host.takeCalls();
    EXPECT_EQ(calls[3], "DataDebug(3)");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), R"(RegisterField("Results", 0))"), 1);
    EXPECT_EQ(calls[calls.size() - 2], "setInitCB(1)");
    EXPECT_EQ(calls.back(), forwarded(FIEL, "Results"));
}

TEST_F(Dispatcher, AChosenFieldMakesAContainerForTheLibrarysContainers) {
    for (const char* name : {"DataObject", "DataArray"}) {
        placeInstance(name);
        dispatch(FIEL, "F");
        EXPECT_EQ(host.takeCalls(),
                  Calls({R"(Register("F", 1))", "initContainer()", forwarded(FIEL, "F")}))
            << name;
        PLUGIN_CLEANUP_FUNCTION(record.get());
    }
}

TEST_F(Dispatcher, AFieldThatCannotBeBoundForLackOfAnInstanceIsStillCopied) {
    platform.threads.refuses = true;
    dispatch(FIEL, "Results");
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_STREQ(record->FieldName, "Results");
}

TEST_F(Dispatcher, InitialisationBindsAndForwards) {
    Intake* const instance = &bindInstance();
    dispatch(INIT);
    EXPECT_EQ(record->instance, instance);
    const Calls calls = host.takeCalls();
    EXPECT_EQ(calls.front(), "DataDebug(3)");
    EXPECT_EQ(calls[calls.size() - 2], "setInitCB(1)");
    EXPECT_EQ(calls.back(), forwarded(INIT));
}

TEST_F(Dispatcher, InitialisationMakesAMissingInstance) {
    dispatch(INIT);
    EXPECT_NE(record->instance, nullptr);
    EXPECT_EQ(host.takeCalls().back(), forwarded(INIT));
}

TEST_F(Dispatcher, ARequestForTheRecordIsAnsweredAndForwarded) {
    bindInstance();
    dispatch(UDAT);
    EXPECT_EQ(out, record.get());
    EXPECT_EQ(host.takeCalls(), Calls({forwarded(UDAT)}));
}

TEST_F(Dispatcher, ARequestForTheRecordIsAnsweredWithoutAnInstanceToo) {
    dispatch(UDAT);
    EXPECT_EQ(out, record.get());
    EXPECT_EQ(host.takeCalls(), Calls());
}

TEST_F(Dispatcher, ARequestForTheRecordWithoutAPlaceForItIsForwarded) {
    bindInstance();
    PLUGIN_DISPATCHER_CALLBACK(record.get(), UDAT, nullptr, nullptr);
    EXPECT_EQ(host.takeCalls(), Calls({forwarded(UDAT)}));
}

TEST_F(Dispatcher, AnyOtherCodeIsForwarded) {
    bindInstance();
    for (const int32_t code : {0, -1, 0x52454654, 0x5849464C}) {
        dispatch(code, "data");
        EXPECT_EQ(host.takeCalls(), Calls({forwarded(code, "data")}));
    }
    EXPECT_EQ(out, nullptr);
}

TEST_F(Dispatcher, AnyOtherCodeIsDroppedWithoutAnInstance) {
    dispatch(7, "data");
    EXPECT_EQ(host.takeCalls(), Calls());
    EXPECT_EQ(record->instance, nullptr);
}

TEST_F(Dispatcher, DoesNotCheckTheState) {
    record->Magic = 1;
    dispatch(7);
    EXPECT_EQ(record->Magic, 1);
    EXPECT_EQ(record->instance, nullptr);
}

using ParameterChange = HostEvents;

TEST_F(ParameterChange, OfTheFieldNameRegistersTheField) {
    bindInstance();
    TestRecord::set(record->FieldName, "Results");
    PLUGIN_CHANGED_CALLBACK(record.get(), 2);
    EXPECT_EQ(host.takeCalls(), Calls({"DataDebug(1)", R"(Register("Results", 1))"}));
}

TEST_F(ParameterChange, OfTheFieldNameTellsTheLibrarysContainers) {
    for (const char* name : {"DataObject", "DataArray"}) {
        placeInstance(name);
        PLUGIN_CHANGED_CALLBACK(record.get(), 2);
        EXPECT_EQ(host.takeCalls(),
                  Calls({"DataDebug(1)", R"(Register("", 1))", forwarded(0x52454654)}))
            << name;
        PLUGIN_CLEANUP_FUNCTION(record.get());
    }
}

TEST_F(ParameterChange, OfTheNotificationIsPassedOnAndTheFieldReadAgain) {
    bindInstance();
    record->ValChangeNotify = 1;
    PLUGIN_CHANGED_CALLBACK(record.get(), 3);
    EXPECT_EQ(host.takeCalls(), Calls({"setNotifyOnValueChange(1)", "refresh()"}));
}

/// Notes the numbers of the parameters that it is told of.
class ListeningIntake : public Intake {
public:
    void onParameterChanged(int32_t index) override { indexes.push_back(index); }
    std::vector<int32_t> indexes;
};

TEST_F(ParameterChange, OfANumberBelowZeroIsNotPassedOn) {
    auto* const instance = new ListeningIntake;
    record->instance = instance;
    for (const int32_t index : {INT32_MIN, INT32_MIN + 10, -1, 11}) {
        PLUGIN_CHANGED_CALLBACK(record.get(), index);
    }
    EXPECT_EQ(instance->indexes, std::vector<int32_t>{0});
}

TEST_F(ParameterChange, OfTheRemoteSwitchDoesNothing) {
    bindInstance();
    record->IsRemote = 1;
    PLUGIN_CHANGED_CALLBACK(record.get(), 4);
    EXPECT_EQ(host.takeCalls(), Calls());
    EXPECT_EQ(record->IsOther, 0);
    EXPECT_EQ(record->instance->IsOther, 0);
}

TEST_F(ParameterChange, OfTheOtherContainerIsCopiedIntoTheHandler) {
    bindInstance();
    record->IsOther = 1;
    record->WhichOther = 2;
    PLUGIN_CHANGED_CALLBACK(record.get(), 5);
    EXPECT_EQ(record->instance->IsOther, 1);
    EXPECT_EQ(record->instance->WhichOther, 0);
    PLUGIN_CHANGED_CALLBACK(record.get(), 6);
    EXPECT_EQ(record->instance->WhichOther, 2);
    EXPECT_EQ(host.takeCalls(), Calls());
}

TEST_F(ParameterChange, OfTheRemoteContainerSwitchesToIt) {
    bindInstance();
    TestRecord::set(record->RemoteContainer, "Stage$Board");
    PLUGIN_CHANGED_CALLBACK(record.get(), 7);
    EXPECT_EQ(record->IsOther, 1);
    EXPECT_EQ(record->WhichOther, 3);
    EXPECT_EQ(record->instance->IsOther, 1);
    EXPECT_EQ(record->instance->WhichOther, 3);
    EXPECT_EQ(host.takeCalls(), Calls({R"(setRemoteContainer("Stage$Board"))"}));
}

TEST_F(ParameterChange, OfTheConversionTableIsPassedOn) {
    bindInstance();
    record->UseConvTable = 1;
    PLUGIN_CHANGED_CALLBACK(record.get(), 8);
    EXPECT_EQ(host.takeCalls(), Calls({"setUseConvTable(1)"}));
    TestRecord::set(record->ConvTableName, "Teams");
    PLUGIN_CHANGED_CALLBACK(record.get(), 9);
    EXPECT_EQ(host.takeCalls(), Calls({R"(setConvTableNmae("Teams"))"}));
}

TEST_F(ParameterChange, OfThePostUpdateActionParsesIt) {
    bindInstance();
    TestRecord::set(params().postAction, "Go=1;");
    PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 17);
    EXPECT_EQ(host.takeCalls(), Calls({"setHostField(store, field)", R"(parse("Go=1;"))"}));
}

TEST_F(ParameterChange, OfTypeOrNameOfTheSharedMemoryBindsItAgain) {
    bindInstance();
    host.sharedMemories[102]["VAR"] = "";
    params().shmtype = 1;
    for (const int32_t number : {18, 19}) {
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + number);
        EXPECT_EQ(host.takeCalls(), Calls({"_api__global_get_shared_script_memory()",
                                           R"(_api__shared_script_memory_has_key(102, "VAR"))"}));
    }
}

TEST_F(ParameterChange, OfAnyOtherParameterHasNoEffectUntilTheNextLoad) {
    bindInstance();
    for (int32_t number = -1; number <= 40; ++number) {
        if (number >= 17 && number <= 19) continue;
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + number);
        EXPECT_EQ(host.takeCalls(), Calls()) << number;
    }
    platform.threads.step();
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));  // no answer, so no load
}

TEST_F(ParameterChange, OfTheStateWordOrTheUserDataDoesNothing) {
    bindInstance();
    for (const int32_t index : {0, 1, 10}) {
        PLUGIN_CHANGED_CALLBACK(record.get(), index);
        EXPECT_EQ(host.takeCalls(), Calls()) << index;
    }
}

TEST_F(ParameterChange, IsDroppedWithoutAnInstance) {
    for (int32_t index = 0; index <= 50; ++index) {
        PLUGIN_CHANGED_CALLBACK(record.get(), index);
    }
    EXPECT_EQ(host.takeCalls(), Calls());
    EXPECT_EQ(record->instance, nullptr);
}

}  // namespace
}  // namespace intake
