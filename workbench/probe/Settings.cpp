#include "workbench/probe/Settings.h"

#include <algorithm>
#include <array>

#include "workbench/probe/kinds.h"

namespace probe {

namespace {

constexpr std::array texts{
    TextParameter{"filename", &Settings::filename},
    TextParameter{"sheet", &Settings::sheet},
    TextParameter{"connStr", &Settings::connStr},
    TextParameter{"query", &Settings::query},
    TextParameter{"range", &Settings::range},
    TextParameter{"xpath", &Settings::xpath},
    TextParameter{"namespaces", &Settings::namespaces},
    TextParameter{"key", &Settings::key},
    TextParameter{"fromRow", &Settings::fromRow},
    TextParameter{"numRows", &Settings::numRows},
    TextParameter{"table", &Settings::table},
    TextParameter{"userName", &Settings::userName},
    TextParameter{"password", &Settings::password},
    TextParameter{"proxyUrl", &Settings::proxyUrl},
    TextParameter{"proxyUser", &Settings::proxyUser},
    TextParameter{"proxyPwd", &Settings::proxyPwd},
    TextParameter{"customHeaders", &Settings::customHeaders},
};

constexpr std::array switches{
    SwitchParameter{"useAuth", &Settings::useAuth},
    SwitchParameter{"avoidCache", &Settings::avoidCache},
    SwitchParameter{"enableProxy", &Settings::enableProxy},
    SwitchParameter{"useCustomHeaders", &Settings::useCustomHeaders},
};

/// The query types, by their values.
constexpr std::array queryTypes{QueryType::Excel, QueryType::Sql, QueryType::Xml, QueryType::Json,
                                QueryType::Html};

bool setText(const std::string& name, const std::string& value, Settings& settings) {
    const auto* const row = std::find_if(
        texts.begin(), texts.end(), [&](const TextParameter& each) { return name == each.name; });
    if (row != texts.end()) settings.*row->member = value;
    return row != texts.end();
}

bool setQueryType(const std::string& value, Settings& settings) {
    const auto* const type = std::find_if(queryTypes.begin(), queryTypes.end(),
                                          [&](QueryType each) { return value == valueOf(each); });
    if (type != queryTypes.end()) settings.queryMode = *type;
    return type != queryTypes.end();
}

}  // namespace

std::span<const TextParameter> textParameters() {
    return texts;
}

std::span<const SwitchParameter> switchParameters() {
    return switches;
}

bool set(const Proposal& proposal, Settings& settings) {
    return std::all_of(proposal.begin(), proposal.end(), [&](const auto& each) {
        const auto& [name, value] = each;
        if (name == "queryMode") return setQueryType(value, settings);
        if (name == "mode" && value == "DataArray") {
            settings.mode = TargetMode::DataArray;
            return true;
        }
        return setText(name, value, settings);
    });
}

}  // namespace probe
