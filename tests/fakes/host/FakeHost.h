#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/cobalt.h"
#include "tests/fakes/host/FakeStore.h"
#include "tests/fakes/host/printed_text.h"

/// The host of one test: notes every call that the plugin makes, one line each, in order, and gives
/// the answers that the test has set. Make one at the start of the test; the calls go to the one
/// that was made last. Host's thread.
///
/// Two look-ups leave no line, because their results show in the calls that they are passed to: the
/// store and the field of a handler.
class FakeHost {
public:
    using Action = std::function<void()>;

    FakeHost();
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    /// Notes a call as `name(arguments)`, then runs what was arranged for it. What stands in front
    /// of a dot is the object that was called.
    template <class... Arguments>
    void called(const std::string& name, const Arguments&... arguments) {
        if (keepsCalls) {
            std::string list;
            (list.append(list.empty() ? "" : ", ").append(printed(arguments)), ...);
            calls.push_back(name + "(" + list + ")");
        }
        run(name);
    }

    /// Runs `action`, which may throw or call the plugin, whenever the function of that name is
    /// called.
    void onCall(const std::string& function, Action action);

    /// The same, for the next call only.
    void onNextCall(const std::string& function, Action action);

    /// Runs behind every call.
    Action onEveryCall;

    /// The calls so far, of which it forgets.
    std::vector<std::string> takeCalls();

    bool isValid(int32_t object) const { return object != -1 && !invalidObjects.contains(object); }

    std::vector<std::string> calls;
    bool keepsCalls = true;

    // What the host answers.
    int32_t localContainer = 42;
    int32_t localScene = 5;
    int32_t storeFunction = 77;  // the scene function of the data store
    int32_t fontEncoding = 1;
    int32_t initPending = 0;
    int32_t sceneMemory = 101;
    int32_t globalMemory = 102;
    int32_t distributedMemory = 103;
    std::set<int32_t> invalidObjects;
    std::map<int32_t, std::map<std::string, std::string>> sharedMemories;
    bool refusesKeys = false;
    const char* macroText = nullptr;

    FakeStore store{"store"};            // of the handlers
    FakeStore sceneStore{"sceneStore"};  // of the local scene
    FakeField field{"field"};            // that the handlers are bound to

    // Expressions of the data store.
    int expressionsMade = 0;
    int expressionsGone = 0;
    DataVariableQuery* macroSource =
        nullptr;  // who the expression that was executed last would ask

private:
    void run(const std::string& name);

    std::map<std::string, Action> actions_;
    FakeHost* previous_;
};

/// The host that the calls go to. There must be one.
FakeHost& fakeHost();
