#include "plugin/Intake.h"

#include <list>
#include <sstream>

#include "host/lumo.h"
#include "pipeline/command_text.h"
#include "platform/Platform.h"
#include "plugin/about_text.h"
#include "plugin/build_command.h"
#include "plugin/host_text.h"
#include "plugin/parameters.h"
#include "plugin/visibility.h"
#include "readers/Readers.h"

namespace intake {

namespace {

constexpr int32_t ACTION_TERMINATE = 2;
constexpr float SHORTEST_INTERVAL = 0.001F;

/// Post-update expressions outlive their instances: the host may still be executing one. They stay
/// reachable here.
DataExpression& makeLastingExpression() {
    static auto* const expressions = new std::list<DataExpression>;
    return expressions->emplace_back();
}

std::shared_ptr<IntakeThread> startWorker() {
    const Platform& platform = systemPlatform();
    return std::make_shared<IntakeThread>(platform, makerOfReaders(platform));
}

std::string withPrefix(const ReaderParams& params, const char* text) {
    return std::string(hostText(params.varsPrefix)).append(text);
}

std::string consoleName(const ReaderParams& params) {
    return withPrefix(params, "READER_CONSOLE");
}

std::string fallbackText(const ReaderParams& params) {
    return withPrefix(params, "READER_NUM_RECORDS=0;");
}

}  // namespace

Intake::Intake()
    : worker_(startWorker()),
      clientProxy_(std::make_shared<IntakeClientProxy>(*this)),
      postExpression_(makeLastingExpression()) {
    postExpression_.setVariableQuery(this);
}

Intake::~Intake() {
    clientProxy_->detach();
    try {
        postExpression_.setVariableQuery(nullptr);
    } catch (...) {
        return;  // a host that fails here is not to be ended by it
    }
}

const char* Intake::getVersion() {
    return INTAKE_VERSION;
}

const char* Intake::getInfo() {
    return ABOUT_TEXT;
}

void Intake::registerParameters() {
    registerReaderParameters();
}

void Intake::syncParameters() {
    callHost([this] { onParameterChanged(POST_ACTION); });
    ReaderParams& p = parameters();
    if (hostText(p.rowsDelimiter).empty()) {
        copyToHost(p.rowsDelimiter, SHORT_TEXT, hostText(p.delimiter));
    }
}

void Intake::initialize() {
    worker_ = startWorker();
    callHost([this] { postExpression_.setVariableQuery(this); });
    syncParameters();
    if (parameters().mode == SHARED_MEMORY) {
        onParameterChanged(SHARED_MEMORY_TYPE);
    }
}

void Intake::onParameterChanged(int32_t index) {
    switch (index) {
        case POST_ACTION:
            return parsePostAction();
        case SHARED_MEMORY_TYPE:
        case SHARED_MEMORY_VARIABLE:
            return bindSharedMemory();
        case AUTO_LOAD:
        case AUTO_LOAD_INTERVAL:
            lastLoadTime_ = 0;
            return;
        default:
            return;
    }
}

void Intake::parsePostAction() {
    callHost([this] { postExpression_.setHostField(getCobalt(), getField()); });
    postExpression_.parse(std::string(hostText(parameters().postAction)).c_str());
}

void Intake::bindSharedMemory() {
    const std::shared_ptr<SharedMemoryBinding> binding = shmBinding_;
    callHost([&] { binding->setMemory(parameters().shmtype); });
    binding->setName(std::string(hostText(parameters().shmvar)));
}

void Intake::onExecAction(int32_t action, void*) {
    if (action == ACTION_LOAD) {
        BuildCommand();
    } else if (action == ACTION_TERMINATE) {
        worker_->Terminate();
    }
}

void Intake::onGuiStatus() {
    showReaderParameters(parameters());
}

void Intake::onExecPerField() {
    const std::shared_ptr<IntakeThread> worker = worker_;
    const std::shared_ptr<IntakeClientProxy> proxy = clientProxy_;
    worker->DeliverOneAnswer();
    if (proxy->isAttached()) {
        loadAutomatically();
    }
}

void Intake::loadAutomatically() {
    const double now = systemPlatform().clock.milliseconds();
    const ReaderParams& p = parameters();
    if (p.autoLoad == 0 || !(p.autoLoadInterval > SHORTEST_INTERVAL)) {
        return;
    }
    if (lastLoadTime_ == 0 || now - lastLoadTime_ > p.autoLoadInterval * 1000.0F) {
        BuildCommand();
        lastLoadTime_ = now;
    }
}

void Intake::BuildCommand() {
    std::string command;
    callHost([&] { command = buildCommandText(parameters()); });
    worker_->PostCommand(clientProxy_, command);
}

void Intake::executeResult(bool success, const std::string& result, const std::string& error) {
    if (parameters().show_data != 0) {
        callHost([&] { writeConsoleVariable(success, result, error); });
    }
    callHost([&] { writeTarget(success, result); });
    runPostAction();
}

void Intake::writeConsoleVariable(bool success, const std::string& result,
                                  const std::string& error) {
    const ReaderParams& p = parameters();
    DataField* console = nullptr;
    callHost([&] { console = getCobalt()->findField(consoleName(p).c_str(), 0, 1); });
    if (console != nullptr) {
        console->setValue(success ? result.c_str() : (fallbackText(p) + error).c_str());
    }
}

void Intake::writeTarget(bool success, const std::string& result) {
    const ReaderParams& p = parameters();
    if (p.mode == SHARED_MEMORY) {
        const std::shared_ptr<SharedMemoryBinding> binding = shmBinding_;
        binding->write(result.c_str());
    } else if (success) {
        getCobalt()->executeScript(result.c_str(), 0);
    } else {
        getCobalt()->executeScript(fallbackText(p).c_str(), 0);
    }
}

void Intake::runPostAction() {
    Cobalt* store = nullptr;
    callHost([&] { store = IDataHandlerImpl::getCobalt(_api__get_sceneid_local(), false); });
    postExpression_.executeExtended(store, _api__lumo_send_command, 0);
}

void Intake::onParameterUpdate(const char* text) {
    std::istringstream in{std::string(hostText(text))};
    for (std::string key, value; in >> key;) {
        ReadFramedValue(in, value);
        if (!in) {
            break;  // the value has no end
        }
        if (key == "FILENAME") {
            copyToHost(parameters().filename, LONG_TEXT, value);
        } else if (key == "SHEET") {
            copyToHost(parameters().sheet, LONG_TEXT, value);
        }
    }
    evSendGuiRefresh();
}

}  // namespace intake
