#include "workbench/probe/explain/look_at_source.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "formats/text/ascii.h"
#include "workbench/probe/explain/database_look.h"
#include "workbench/probe/explain/html_look.h"
#include "workbench/probe/explain/json_look.h"
#include "workbench/probe/explain/remedies.h"
#include "workbench/probe/explain/settings_check.h"
#include "workbench/probe/explain/workbook_look.h"
#include "workbench/probe/explain/xml_look.h"
#include "workbench/probe/fetch/fetched_words.h"
#include "workbench/probe/fetch/login.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using Clock = std::chrono::steady_clock;

constexpr long firstErrorStatus = 400;
constexpr long forbiddenStatus = 403;
constexpr long firstServerErrorStatus = 500;

std::string arrivalText(const Settings& settings, const Fetched& source) {
    std::string text = source.status == 0 ? "" : std::to_string(source.status) + ", ";
    if (!source.contentType.empty()) text += source.contentType + ", ";
    text += sizeText(source.body.size());
    if (isUrl(settings.filename))
        text += ", " + std::to_string(std::lround(source.milliseconds)) + " ms";
    for (const Redirect& each : source.redirects)
        text += "; sent on (" + std::to_string(each.status) + ") to " + each.address;
    if (source.certificate)
        text += "; certificate of " + source.certificate->subject + ", valid from " +
                source.certificate->validFrom + " until " + source.certificate->validUntil;
    return text;
}

/// Whether the plugin may read a source of this kind by this query type.
bool mayRead(QueryType type, Kind kind, const Fetched& source) {
    const bool isPlain = kind == Kind::Text || kind == Kind::Unknown;
    switch (type) {
        case QueryType::Excel:
            return kind == Kind::Workbook || kind == Kind::OldDocument || kind == Kind::Zip;
        case QueryType::Xml:
            return kind == Kind::Xml || (kind == Kind::Html && isXml(source));
        case QueryType::Json:
            return kind == Kind::Json || isPlain;
        case QueryType::Html:
            return kind == Kind::Html || isPlain ||
                   (kind == Kind::Xml &&
                    intake::lowerCase(source.body).find("<table") != std::string::npos);
        default:
            return false;
    }
}

void lookInto(const Settings& settings, const Fetched& source, Ladder& ladder) {
    switch (settings.queryMode) {
        case QueryType::Excel:
            return lookAtWorkbook(settings, source, ladder);
        case QueryType::Xml:
            return lookAtXml(settings, source, ladder);
        case QueryType::Json:
            return lookAtJson(settings, source.body, ladder);
        case QueryType::Html:
            return lookAtHtml(settings, source, ladder);
        default:
            return;
    }
}

/// Proposes the query type that reads the source.
void proposeType(const Settings& settings, Kind kind, Stage stage, Ladder& ladder) {
    const auto type = queryTypeFor(kind);
    const bool isFile = !isUrl(settings.filename);
    if (!type || *type == QueryType::Sql || (*type == QueryType::Excel && !isFile)) return;
    ladder.propose(stage, {{"queryMode", valueOf(*type)}});
}

void tellRefused(const Settings& settings, const Fetched& source, const std::string& what,
                 Ladder& ladder) {
    const bool isProxy = source.status == proxyLogin;
    const std::string parameters =
        isProxy ? "\"Proxy User Name\" (proxyUser) and \"Proxy Password\" (proxyPwd)"
                : "\"Use Authentication\" (useAuth), \"User Name\" (userName) and \"Password\" "
                  "(password)";
    ladder.fail(Stage::Fetched, arrivalText(settings, source),
                what + " " + loginFault(settings, source), "Set " + parameters + ".");
}

/// What to do about an answer that holds nothing to load, and is no fault of the server's.
std::string statusRemedy(const Settings& settings, long status) {
    if (status != forbiddenStatus)
        return "Set \"File Name\" (filename) to an address that the server has.";
    return settings.useAuth
               ? "Ask whoever runs the server to let this user read it."
               : "Ask whoever runs the server for leave to read it; it may take a login.";
}

/// What the status of the answer means for the load.
void judgeStatus(const Settings& settings, const Fetched& source, Kind kind, Ladder& ladder) {
    const std::string seen = arrivalText(settings, source);
    if (source.status < firstErrorStatus) return ladder.ok(Stage::Fetched, seen);
    const std::string what =
        std::string(source.status == proxyLogin ? "The proxy" : "The server") +
        " answers with status " + std::to_string(source.status) +
        (kind == Kind::Empty ? std::string(" and nothing.")
                             : ", and with what is " + wordsFor(kind, source) + ".");
    if (asksForLogin(source.status)) return tellRefused(settings, source, what, ladder);
    if (source.status >= firstServerErrorStatus)
        return ladder.fail(Stage::Fetched, seen, what + " The fault is the server's.",
                           "Try again later, or ask whoever runs the server.");
    const bool isWanted = queryTypeFor(kind) == settings.queryMode;
    if (!isWanted)
        return ladder.fail(Stage::Fetched, seen, what, statusRemedy(settings, source.status));
    ladder.warn(Stage::Fetched, seen, what + " The plugin loads it all the same.");
}

void tellPacked(const Settings& settings, Ladder& ladder) {
    ladder.fail(Stage::Format, "compressed (gzip)",
                "The query type " + std::string(nameOf(settings.queryMode)) +
                    " takes a source as it comes and does not unpack it.",
                isUrl(settings.filename)
                    ? "Have the server send it as it is: set \"Use Custom Headers\" "
                      "(useCustomHeaders) and \"Custom Headers\" (customHeaders)."
                    : "Unpack the file.");
    if (isUrl(settings.filename) && settings.customHeaders.empty())
        ladder.propose(Stage::Format,
                       {{"useCustomHeaders", "1"}, {"customHeaders", "Accept-Encoding: identity"}});
}

/// What to do about an address or a file that holds something else than the query type says.
const char* otherKindRemedy(const Settings& settings, Kind kind) {
    if (kind == Kind::Html && isUrl(settings.filename))
        return "Look at the address in a browser: a server sends a page when a login has expired, "
               "or when the address is another one.";
    return queryTypeFor(kind) ? "Set \"Query type: \" (queryMode) to what the source is."
                              : "What can be loaded is JSON, XML, HTML tables, worksheets and "
                                "databases: have it as one of these.";
}

void tellOtherKind(const Settings& settings, const Fetched& source, Kind kind, Ladder& ladder) {
    const std::string words = wordsFor(kind, source);
    if (kind == Kind::Empty)
        return ladder.fail(Stage::Format, "empty", "The source is empty: it has not one character.",
                           "Wait until it is written, or ask whoever writes it.");
    if (kind == Kind::Gzip) return tellPacked(settings, ladder);
    const std::string sent = source.redirects.empty() ? ""
                                                      : " The server sent the request on to " +
                                                            source.redirects.back().address + ".";
    ladder.fail(Stage::Format, words,
                "The query type is " + std::string(nameOf(settings.queryMode)) +
                    ", and the source is " + words + "." + sent,
                otherKindRemedy(settings, kind));
    proposeType(settings, kind, Stage::Format, ladder);
}

constexpr const char* proxyUnknown =
    "The system does not say in time which proxy to use. The plugin searches for 30 seconds and "
    "then loads without one.";
constexpr const char* setProxy =
    "Set \"Proxy Mode\" (proxyMode) to Manual Configuration and \"Proxy URL\" (proxyUrl), or "
    "switch \"Proxy on/off\" (enableProxy) off.";

void judgeAddress(const Settings& settings, bool isProxyUnknown, Ladder& ladder) {
    const std::string address = withoutUserInfo(settings.filename);
    if (!isProxyUnknown) return ladder.ok(Stage::Address, address);
    ladder.warn(Stage::Address, address, proxyUnknown, setProxy);
}

void lookAtArrived(const Settings& settings, const Fetched& source, Ladder& ladder) {
    const Kind kind = recognise(source.body);
    judgeStatus(settings, source, kind, ladder);
    if (ladder.at(Stage::Settings).state == State::Failed) {
        const bool isOtherType =
            settings.queryMode == QueryType::Sql ||
            (settings.queryMode == QueryType::Excel && isUrl(settings.filename));
        if (isOtherType) return proposeType(settings, kind, Stage::Settings, ladder);
    }
    if (!mayRead(settings.queryMode, kind, source))
        return tellOtherKind(settings, source, kind, ladder);
    lookInto(settings, source, ladder);
}

void tellNotFetched(const Settings& settings, const FetchFailure& failure, Ladder& ladder) {
    const std::string address = withoutUserInfo(settings.filename);
    const bool hadAddress = failure.stage == FetchFailure::Stage::Fetched;
    const Stage stage = hadAddress ? Stage::Fetched : Stage::Address;
    if (hadAddress) judgeAddress(settings, failure.isProxyUnknown, ladder);
    std::string seen = hadAddress ? "" : address;
    if (failure.certificate)
        seen = "certificate of " + failure.certificate->subject + ", issued by " +
               failure.certificate->issuer + ", valid from " + failure.certificate->validFrom +
               " until " + failure.certificate->validUntil;
    // A proxy may be the only way there.
    const bool isForWantOfProxy = !hadAddress && failure.isProxyUnknown;
    ladder.fail(stage, seen,
                "The source " + std::string(failure.what()) + "." +
                    (isForWantOfProxy ? std::string(" ") + proxyUnknown : ""),
                isForWantOfProxy ? setProxy : failure.next);
    if (!failure.proposal.empty()) ladder.propose(stage, failure.proposal);
    ladder.credentialsRefused = failure.credentialsRefused;
    ladder.isLate = failure.isLate;
}

/// As what a source is fetched that its query type does not read.
Settings fetchable(Settings settings) {
    const bool isRead = settings.queryMode != QueryType::Sql &&
                        !(settings.queryMode == QueryType::Excel && isUrl(settings.filename));
    if (!isRead) settings.queryMode = QueryType::Json;
    return settings;
}

}  // namespace

Ladder lookAtSource(const Settings& settings, double timeoutSeconds, bool mayWrite) {
    const auto start = Clock::now();
    const auto patience =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(timeoutSeconds));
    Ladder ladder;
    checkSettings(settings, ladder);
    if (settings.queryMode == QueryType::Sql && !settings.connStr.empty()) {
        lookAtDatabase(settings, mayWrite, start + patience, ladder);
        return ladder;
    }
    if (settings.filename.empty()) return ladder;
    try {
        const Fetched source = fetch(fetchable(settings), timeoutSeconds);
        judgeAddress(settings, source.isProxyUnknown, ladder);
        ladder.credentialsRefused = source.credentialsRefused;
        ladder.exchange = source.exchange;
        lookAtArrived(settings, source, ladder);
        const auto look = [&source](const Settings& mended) {
            Ladder again;
            checkSettings(mended, again);
            lookAtArrived(mended, source, again);
            return again;
        };
        constexpr std::size_t large = 10'000'000;  // bytes; each remedy costs a look at all of them
        completeRemedies(settings, look, source.body.size() > large ? 1 : 8, start + patience / 2,
                         ladder);
    } catch (const FetchFailure& failure) {
        tellNotFetched(settings, failure, ladder);
    }
    return ladder;
}

}  // namespace probe
