// What `explore` offers loads as many records as it says: documents at random, each of them the
// same in every run.

#include <rapidjson/document.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <random>
#include <thread>

#include "tests/formats/workbook/TestBook.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

/// What may be selected, and how many records that gives.
struct Offer {
    Settings settings;
    std::size_t records = 0;
};

/// Draws that are the same wherever the test runs.
class Draw {
public:
    explicit Draw(unsigned seed) : numbers_(seed) {}

    /// From 0 on, below the end.
    std::size_t below(std::size_t end) { return numbers_() % end; }
    bool isOneIn(std::size_t chances) { return below(chances) == 0; }
    const std::string& of(const std::vector<std::string>& texts) {
        return texts[below(texts.size())];
    }

private:
    std::mt19937 numbers_;
};

// Names as feeds have them, and some that only look like something else; none with the brackets
// that no script can carry.
const std::vector<std::string> jsonNames{
    "id",    "name",  "teamName", "points", "Home team", "kick-off", "a.b",   "7",
    "größe", "$type", "@id",      "rows",   "data",      "null",     "naïve", "x:y",
    "*",     "a/b",   "",         " pad ",  "tab\\tx",   "q\\\"q",   "semi;"};
const std::vector<std::string> texts{"Quay", "Pier 4", "",     " ",      "7",   "1.50",
                                     "true", "Köge",   "a, b", "O'Hara", "<b>", "a;b"};

std::string jsonValue(Draw& draw, int depth);

std::string jsonObject(Draw& draw, int depth) {
    std::string text;
    const std::size_t members = draw.below(5);
    for (std::size_t i = 0; i < members; ++i)
        text += (text.empty() ? "\"" : ", \"") + draw.of(jsonNames) +
                "\": " + jsonValue(draw, depth + 1);
    return "{" + text + "}";
}

std::string jsonArray(Draw& draw, int depth) {
    std::string text;
    const std::size_t elements = draw.below(5);
    for (std::size_t i = 0; i < elements; ++i)
        text += (text.empty() ? "" : ", ") + jsonValue(draw, depth + 1);
    return "[" + text + "]";
}

std::string jsonValue(Draw& draw, int depth) {
    constexpr int deepest = 5;
    const std::size_t kind = draw.below(depth < deepest ? 8 : 4);
    if (kind >= 6) return jsonObject(draw, depth);
    if (kind >= 4) return jsonArray(draw, depth);
    if (kind == 3) return draw.of({"null", "true", "false"});
    if (kind == 2) return draw.of({"0", "-1.5", "12345678901234567890", "1e3"});
    return "\"" + draw.of(texts) + "\"";
}

/// An object or an array that holds something.
std::string jsonDocument(Draw& draw) {
    std::string rows;
    for (std::size_t i = 0; i < 4; ++i)
        rows += (i == 0 ? "" : ", ") + jsonObject(draw, 2);
    return draw.isOneIn(4) ? "[" + rows + "]"
                           : "{\"rows\": [" + rows + "], \"more\": " + jsonValue(draw, 1) +
                                 ", \"data\": " + jsonObject(draw, 1) + "}";
}

const std::vector<std::string> xmlNames{"item", "name", "n:rank", "o:rank", "größe", "a.b", "a-b"};

std::string xmlElement(Draw& draw, int depth) {
    constexpr int deepest = 5;
    const std::string name = draw.of(xmlNames);
    std::string text = "<" + name;
    if (draw.isOneIn(2)) text += " id='" + std::to_string(draw.below(9)) + "'";
    if (draw.isOneIn(4)) text += " n:kind='x'";
    if (draw.isOneIn(6)) text += " xmlns='urn:inner'";
    text += ">";
    for (std::size_t i = draw.below(depth < deepest ? 4 : 1); i > 0; --i)
        text += xmlElement(draw, depth + 1);
    if (draw.isOneIn(2)) text += draw.of({"Quay", " ", "&lt;b>", "<![CDATA[a<b]]>", "<!-- c -->"});
    return text + "</" + name + ">";
}

std::string xmlDocument(Draw& draw) {
    const bool hasDefault = draw.isOneIn(3);
    std::string text = "<feed xmlns:n='urn:n' xmlns:o='urn:o'";
    text += hasDefault ? " xmlns='urn:feed'>" : ">";
    for (std::size_t i = 0; i < 4; ++i)
        text += xmlElement(draw, 1);
    return text + "</feed>";
}

std::string htmlTable(Draw& draw) {
    std::string text = "<table";
    if (draw.isOneIn(3))
        text += " id='" + draw.of({"heats", "final", "t 1", "t\"q", "a|b", "a\\b"}) + "'";
    if (draw.isOneIn(3)) text += " class='" + draw.of({"results", "wide box"}) + "'";
    text += ">";
    if (draw.isOneIn(3)) text += "<caption>" + draw.of({"Heats", "Final", "Day 2"}) + "</caption>";
    const std::size_t columns = 1 + draw.below(4);
    for (std::size_t row = draw.below(5); row > 0; --row) {
        text += "<tr>";
        for (std::size_t column = 0; column < columns; ++column)
            text += draw.isOneIn(6) ? "<td colspan=2>wide"
                                    : "<th>" + draw.of({"Lane", "Time", "", "Club name", "1"});
    }
    return text + "</table>";
}

std::string htmlPage(Draw& draw) {
    std::string text = "<!DOCTYPE html><title>Swim</title>";
    for (std::size_t i = 0; i < 5; ++i) {
        const bool isWrapped = draw.isOneIn(2);
        text += "<h2>" + draw.of({"Heats", "Final", "Day 2"}) + "</h2>";
        if (isWrapped) text += "<div id='" + draw.of({"left", "right", "heats"}) + "'>";
        text += htmlTable(draw) + (isWrapped ? "</div>" : "");
    }
    return text;
}

std::string workbook(Draw& draw) {
    intake::TestBook book;
    const std::vector<std::string> names{"Round 28", "Teams", "O'Hara", "Größe", "a.b", "Sheet!1"};
    for (std::size_t sheet = 0; sheet < names.size(); ++sheet) {
        std::string rows;
        const std::size_t columns = 1 + draw.below(5);
        std::size_t number = 1;
        for (std::size_t row = draw.below(6); row > 0; --row, number += 1 + draw.below(6) / 5) {
            rows += "<row r='" + std::to_string(number) + "'>";
            for (std::size_t column = 0; column < columns; ++column) {
                const std::string place =
                    std::string(1, static_cast<char>('A' + column)) + std::to_string(number);
                if (draw.isOneIn(5)) continue;
                rows += draw.isOneIn(3)
                            ? "<c r='" + place + "'><v>" + std::to_string(number) + "</v></c>"
                            : "<c r='" + place + "' t='inlineStr'><is><t>" +
                                  draw.of({"Home", "Away", "Kick-off", "Home odds", "x.y", "a]b",
                                           "Größe", "Order", "group", "Key"}) +
                                  "</t></is></c>";
            }
            rows += "</row>";
        }
        book.sheet(names[sheet], rows);
    }
    return book.bytes();
}

class ExploredSettings : public ExplainTest {
protected:
    static constexpr std::size_t wanted = 300;

    /// What `explore` offers of a document, and of each of its places.
    std::vector<Offer> offersOf(const std::string& file, const std::string& place = "") const {
        std::vector<std::string> arguments{"explore", file, "--out", "json", "--limit", "1000"};
        if (!place.empty()) arguments.insert(arguments.end(), {"--at", place});
        const ChildResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        rapidjson::Document outline;
        outline.Parse(result.out.c_str());
        EXPECT_FALSE(outline.HasParseError()) << result.out;
        std::vector<Offer> offers;
        for (const rapidjson::Value& entry : outline["entries"].GetArray()) {
            if (entry["type"] == "heading") continue;
            Offer offer{{"queryMode=" + std::string(outline["queryMode"].GetString()),
                         "filename=" + file, "table=T", "mode=DataArray"},
                        entry["records"].GetUint()};
            for (const auto& setting : entry["set"].GetObject())
                offer.settings.push_back(std::string(setting.name.GetString()) + "=" +
                                         setting.value.GetString());
            if (entry["set"].MemberCount() > 0) offers.push_back(offer);
            if (entry.HasMember("where")) offers.push_back(whereOf(entry["where"], offer));
            const std::string below = entry["place"].GetString();
            if (!place.empty() || below.empty()) continue;
            for (const std::string& each : {below, firstEntryAt(below, file)}) {
                const std::vector<Offer> more = offersOf(file, each);
                offers.insert(offers.end(), more.begin(), more.end());
            }
        }
        return offers;
    }

    /// The place of the first of several entries, in files that have such ones.
    static std::string firstEntryAt(const std::string& place, const std::string& file) {
        if (file.ends_with(".json")) return place + "[0]";
        const bool isRoot = std::count(place.begin(), place.end(), '/') < 2;
        return file.ends_with(".xml") && !isRoot ? place + "[1]" : place;
    }

    /// The offer of all records that have a value.
    static Offer whereOf(const rapidjson::Value& where, const Offer& like) {
        Offer offer{{like.settings.begin(), like.settings.begin() + 4}, where["records"].GetUint()};
        for (const auto& setting : where["set"].GetObject())
            offer.settings.push_back(std::string(setting.name.GetString()) + "=" +
                                     setting.value.GetString());
        return offer;
    }

    /// Loads with each of the offers.
    void expectTrue(const std::vector<Offer>& offers) const {
        std::atomic<std::size_t> next{0};
        std::mutex reports;
        const auto work = [&](const std::string& name) {
            std::filesystem::create_directories(folder / name);
            for (std::size_t i = next++; i < offers.size(); i = next++) {
                const std::string words = contradiction(offers[i], folder / name);
                const std::lock_guard lock(reports);
                EXPECT_EQ(words, "");
            }
        };
        std::vector<std::thread> workers;
        for (const char* name : {"one", "two", "three", "four"})
            workers.emplace_back(work, name);
        for (std::thread& worker : workers)
            worker.join();
    }

    /// Makes documents until there are enough offers, and loads with each of these.
    template <class Make>
    void expectTrueOf(const std::string& ending, Make make) const {
        Draw draw(28);
        std::vector<Offer> offers;
        for (std::size_t document = 0; offers.size() < wanted; ++document) {
            const std::string name = std::to_string(document) + ending;
            write(name, make(draw));
            const std::string file = (std::filesystem::canonical(folder) / name).string();
            const std::vector<Offer> more = offersOf(file);
            offers.insert(offers.end(), more.begin(), more.end());
        }
        offers.resize(wanted);
        expectTrue(offers);
    }

private:
    /// What is said of an offer that does not hold.
    static std::string contradiction(const Offer& offer, const std::filesystem::path& folder) {
        std::vector<std::string> arguments{"load", "--out", "script", "--expect-records",
                                           std::to_string(offer.records)};
        std::string shown;
        for (const std::string& setting : offer.settings) {
            arguments.insert(arguments.end(), {"--set", setting});
            shown += " --set '" + setting + "'";
        }
        const ChildResult result = runChild(WORKBENCH, arguments, folder);
        return result.status == 0 ? "" : shown + "\n" + result.err + result.out;
    }
};

}  // namespace

TEST_F(ExploredSettings, OfJsonLoadWhatIsSaid) {
    expectTrueOf(".json", jsonDocument);
}

TEST_F(ExploredSettings, OfXmlLoadWhatIsSaid) {
    expectTrueOf(".xml", xmlDocument);
}

TEST_F(ExploredSettings, OfPagesLoadWhatIsSaid) {
    expectTrueOf(".html", htmlPage);
}

TEST_F(ExploredSettings, OfWorkbooksLoadWhatIsSaid) {
    expectTrueOf(".xlsx", workbook);
}
