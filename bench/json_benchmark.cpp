// The JSON reader on generated documents of 1 KB, 1 MB and 100 MB: each stage alone, the whole job
// from file to script, and RapidJSON's Document::Parse as the baseline. Every time is the stage's
// own: preparing its input and freeing its results are left out. And for 1 KB the processor time of
// a load from command text to script beside that of opening and reading its file.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/json_items.h"
#include "bench/process_usage.h"
#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_select.h"
#include "pipeline/RDR_FILE.h"
#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"
#include "pipeline/WorkerState.h"
#include "pipeline/command_text.h"
#include "platform/Platform.h"
#include "readers/Readers.h"
#include "readers/json/JSONHandler.h"
#include "readers/json/JsonRecords.h"

namespace {

using intake::JsonDocument;

size_t documentSize(const benchmark::State& state) {
    return static_cast<size_t>(state.range(0));
}

std::string commandFor(const std::string& file) {
    return "MODE |JSON| FILENAME |" + file + "| XPATH |items| NUM_ROWS |0| TABLE |T| TGT_MODE 1 ";
}

intake::RequestRecord allItems(const std::string& file = {}) {
    intake::RequestRecord request;
    std::istringstream command(commandFor(file));
    ParseCommand(request, command);
    return request;
}

/// A document that is parsed in place needs a copy of the text for every run.
intake::ByteBuffer copyOf(const std::string& text) {
    intake::ByteBuffer copy;
    std::memcpy(copy.prepare(text.size() + 1), text.c_str(), text.size() + 1);
    copy.commit(text.size() + 1);
    return copy;
}

JsonDocument parse(const std::string& text) {
    return JsonDocument(copyOf(text));
}

/// A generated document in a file that lasts as long as this object.
class ItemsFile {
public:
    explicit ItemsFile(const std::string& text) { std::ofstream(path_, std::ios::binary) << text; }
    ~ItemsFile() { std::remove(path_.c_str()); }
    ItemsFile(const ItemsFile&) = delete;
    ItemsFile& operator=(const ItemsFile&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_ = "json_benchmark_items.json";  // in the current directory
};

/// Calls `job` and returns the seconds that it took.
template <class Job>
double timed(Job job) {
    const double start = bench::wallSeconds();
    job();
    return bench::wallSeconds() - start;
}

double timeRapidJson(const std::string& text) {
    rapidjson::Document document;
    const double seconds = timed([&] { document.Parse(text.c_str()); });
    if (document.HasParseError()) {
        throw std::logic_error("RapidJSON refuses the generated document");
    }
    return seconds;
}

double timeWholeJob(const intake::RequestRecord& request) {
    const intake::Platform& platform = intake::systemPlatform();
    intake::ReaderLogger logger(platform.clock, intake::systemPlatform().textFiles);
    logger.setLevel(intake::LOG_FATAL);
    const intake::EndMark endMark;
    const auto connections = platform.http.keepConnections();
    const auto client = platform.http.create(*connections, endMark);
    intake::JSONHandler reader(logger, platform.files, *client, platform.diagnostics);
    std::string script, error;
    bool success = false;
    const double seconds = timed([&] { success = reader.Read(request, script, error); });
    if (!success) {
        throw std::logic_error(error);
    }
    return seconds;
}

void reportBytes(benchmark::State& state, size_t documentBytes) {
    state.SetBytesProcessed(static_cast<int64_t>(documentBytes) *
                            static_cast<int64_t>(state.iterations()));
}

void RapidJsonParse(benchmark::State& state) {
    const std::string text = bench::jsonItems(documentSize(state));
    for (auto _ : state) {
        state.SetIterationTime(timeRapidJson(text));
    }
    reportBytes(state, text.size());
}

void Parse(benchmark::State& state) {
    const std::string text = bench::jsonItems(documentSize(state));
    for (auto _ : state) {
        auto copy = copyOf(text);
        std::unique_ptr<JsonDocument> document;
        state.SetIterationTime(
            timed([&] { document = std::make_unique<JsonDocument>(std::move(copy)); }));
    }
    reportBytes(state, text.size());
}

void Collect(benchmark::State& state) {
    const std::string text = bench::jsonItems(documentSize(state));
    const JsonDocument document = parse(text);
    for (auto _ : state) {
        intake::JsonRecords::Nodes nodes;
        state.SetIterationTime(
            timed([&] { nodes = selectNodes(document, intake::parsePath("items")); }));
    }
    reportBytes(state, text.size());
}

void Write(benchmark::State& state) {
    const std::string text = bench::jsonItems(documentSize(state));
    const JsonDocument document = parse(text);
    const auto nodes = selectNodes(document, intake::parsePath("items"));
    const intake::RequestRecord request = allItems();
    for (auto _ : state) {
        std::string script;
        state.SetIterationTime(
            timed([&] { intake::JsonRecords(document, request, script).write(nodes); }));
    }
    reportBytes(state, text.size());
}

/// File to script. Runs in turn with the baseline, so that `ratio` does not depend on how busy the
/// machine was.
void WholeJob(benchmark::State& state) {
    const std::string text = bench::jsonItems(documentSize(state));
    const ItemsFile file(text);
    const intake::RequestRecord request = allItems(file.path());
    double wholeJob = 0;
    double rapidJson = 0;
    for (auto _ : state) {
        rapidJson += timeRapidJson(text);
        const double seconds = timeWholeJob(request);
        wholeJob += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = wholeJob / rapidJson;
    reportBytes(state, text.size());
}

constexpr size_t SMALL = 1'000;

void LoadSmallFile(benchmark::State& state) {
    const ItemsFile file(bench::jsonItems(SMALL));
    const std::string command = commandFor(file.path());
    const intake::Platform& platform = intake::systemPlatform();
    intake::WorkerState worker(platform, intake::makerOfReaders(platform));
    for (auto _ : state) {
        bool success = false;
        std::string script, error;
        worker.ProcessCommand(command, success, script, error);
        if (!success) {
            throw std::logic_error(error);
        }
    }
}

void OpenAndReadSmallFile(benchmark::State& state) {
    const ItemsFile file(bench::jsonItems(SMALL));
    const intake::Platform& platform = intake::systemPlatform();
    intake::RDR_FILE reader(platform.files, platform.diagnostics);
    for (auto _ : state) {
        intake::ByteBuffer bytes;
        if (!reader.Read(file.path(), bytes)) {
            throw std::logic_error("The file cannot be read.");
        }
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->UseManualTime()->Unit(benchmark::kMicrosecond);
    benchmark->MinTime(1)->Arg(1'000)->Arg(1'000'000)->Arg(100'000'000);
}

BENCHMARK(RapidJsonParse)->Apply(sizes);
BENCHMARK(Parse)->Apply(sizes);
BENCHMARK(Collect)->Apply(sizes);
BENCHMARK(Write)->Apply(sizes);
BENCHMARK(WholeJob)->Apply(sizes);
BENCHMARK(LoadSmallFile)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenAndReadSmallFile)->Unit(benchmark::kMicrosecond);

}  // namespace
