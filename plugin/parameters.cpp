#include "plugin/parameters.h"

#include <array>
#include <variant>

#include "host/lumo.h"
#include "plugin/HostRecord.h"
#include "plugin/host_text.h"

namespace intake {

namespace {

// The kinds of parameters; members are in the order of the host's registration calls.
struct String {
    const char* initial;
    size_t maxLength;
    int32_t width = 80;
};
struct Bool {
    int32_t initial;
};
struct Radio {
    int32_t initial;
    const char* const* entries;
};
struct Float {
    float initial, minimum, maximum;
};
struct Integer {
    int32_t initial, minimum, maximum;
};
struct Container {
    const char* initial;
};
struct MultiLineText {
    const char* initial;
    int32_t width, height;
};
struct PushButton {
    int32_t action;
};

struct Parameter {
    const char* name;
    const char* label;
    std::variant<String, Bool, Radio, Float, Integer, Container, MultiLineText, PushButton> kind;
};

constexpr const char* WHICH_OTHER[] = {"PARENT", "GrPARENT", " GrGrPARENT ", "REMOTE", nullptr};
constexpr const char* QUERY_TYPES[] = {" EXCEL ", " SQL ", " XML ", " JSON ", nullptr};
constexpr const char* TARGET_MODES[] = {"DataTable",        "DataArray",     "DataStructure",
                                        "Data Field Array", "Shared Memory", nullptr};
constexpr const char* MEMORY_TYPES[] = {"Scene", "Global", " Distributed  ", nullptr};
constexpr const char* INPUT_FORMATS[] = {" XML ", " Payload ", nullptr};
constexpr const char* OUTPUT_FORMATS[] = {" Text ", " XML ", nullptr};
constexpr const char* LOG_LEVELS[] = {" FATAL ", " ERROR ", " WARNING ",
                                      " INFO ",  " DEBUG ", nullptr};
constexpr const char* PROXY_MODES[] = {" Auto-Detect ", " System Settings ",
                                       " Manual Configuration ", nullptr};

constexpr std::array<Parameter, 37> READER_PARAMETERS{{
    {"queryMode", "Query type: ", Radio{0, QUERY_TYPES}},
    {"filename", "File Name", String{"", LONG_TEXT}},
    {"sheet", "Table/Sheet", String{"", LONG_TEXT}},
    {"connStr", "Connection String", String{"", LONG_TEXT}},
    {"useAuth", "Use Authentication", Bool{0}},
    {"userName", "User Name", String{"", LONG_TEXT}},
    {"password", "Password", String{"", LONG_TEXT}},
    {"avoidCache", "Avoid Cache", Bool{1}},
    {"query", "SQL Query", String{"", QUERY_TEXT}},
    {"xpath", "XPath", String{"", LONG_TEXT}},
    {"namespaces", "Namespaces", String{"", LONG_TEXT}},
    {"key", "Key", String{"", SHORT_TEXT}},
    {"fromRow", "From row", String{"", SHORT_TEXT}},
    {"numRows", "Number of rows", String{"", SHORT_TEXT}},
    {"range", "Fields to read", String{"", SHORT_TEXT}},
    {"table", "CB Field Name", String{"Table", SHORT_TEXT}},
    {"mode", "Field is a: ", Radio{0, TARGET_MODES}},
    {"postAction", "Post Update Action", String{"", POST_ACTION_TEXT}},
    {"shmtype", "Shared Memory Type ", Radio{0, MEMORY_TYPES}},
    {"shmvar", "Shared Memory Variable ", String{"VAR", SHORT_TEXT}},
    {"delimiter", "Fields Delimiter ", String{"|", SHORT_TEXT}},
    {"rowsDelimiter", "Rows Delimiter ", String{"", SHORT_TEXT}},
    {"inputFormat", "Input Format ", Radio{0, INPUT_FORMATS}},
    {"outputFormat", "Output Format ", Radio{0, OUTPUT_FORMATS}},
    {"show_data", "Show Data", Bool{0}},
    {"varsPrefix", "Return Variables Prefix ", String{"", SHORT_TEXT}},
    {"logLevel", "Log Level", Radio{2, LOG_LEVELS}},
    {"autoLoad", "Load Automatically ", Bool{0}},
    {"autoLoadInterval", "Automatic load period (in seconds) ", Float{10.0F, 0.0F, 6000.0F}},
    {"load", "Load", PushButton{ACTION_LOAD}},
    {"enableProxy", "Proxy on/off", Bool{0}},
    {"proxyMode", "Proxy Mode", Radio{1, PROXY_MODES}},
    {"proxyUrl", "Proxy URL", String{"", SHORT_TEXT}},
    {"proxyUser", "Proxy User Name", String{"", SHORT_TEXT}},
    {"proxyPwd", "Proxy Password", String{"", SHORT_TEXT}},
    {"useCustomHeaders", "Use Custom Headers", Bool{0}},
    {"customHeaders", nullptr, MultiLineText{"", 800, 300}},
}};

/// Makes the host's call for one parameter.
struct Registration {
    const char* name;
    const char* label;

    void operator()(const String& text) const {
        evRegisterParameterString(name, label, text.initial, text.width,
                                  static_cast<int32_t>(text.maxLength), 0);
    }
    void operator()(const Bool& toggle) const {
        evRegisterParameterBool(name, label, toggle.initial);
    }
    void operator()(const Radio& radio) const {
        evRegisterParameterRadio(name, label, radio.initial, radio.entries);
    }
    void operator()(const Float& number) const {
        evRegisterParameterFloat(name, label, number.initial, number.minimum, number.maximum);
    }
    void operator()(const Integer& number) const {
        evRegisterParameterInt(name, label, number.initial, number.minimum, number.maximum);
    }
    void operator()(const Container& container) const {
        evRegisterParameterContainer(name, label, container.initial);
    }
    void operator()(const MultiLineText& text) const {
        evRegisterParameterText(name, text.initial, text.width, text.height);
    }
    void operator()(const PushButton& button) const {
        evRegisterPushButton(name, label, button.action);
    }
};

void registerParameter(const Parameter& parameter) {
    std::visit(Registration{parameter.name, parameter.label}, parameter.kind);
}

struct BindingParameter {
    Parameter parameter;
    bool offered;
};

}  // namespace

void registerBindingParameters(int32_t flags) {
    const bool input = (flags & 1) != 0;
    const bool output = (flags & 2) != 0;
    const bool other = (flags & 4) != 0;
    const char* const fieldLabel = input    ? "Field Name"
                                   : output ? "Output Field Name"
                                            : "Unused Field Name";
    const std::array<BindingParameter, 9> parameters{{
        {{"Magic", "Magic", Integer{MAGIC_BOUND, MAGIC_BOUND, MAGIC_BOUND}}, false},
        {{"FieldName", fieldLabel, String{"", 100, 50}}, input || output},
        {{"ValChangeNotify", "Notify Only On Change", Bool{0}}, input},
        {{"IsRemote", "Use Remote Container", Bool{0}}, false},
        {{"IsOther", "Use Other Container", Bool{0}}, other},
        {{"WhichOther", "    Which", Radio{0, WHICH_OTHER}}, other},
        {{"RemoteContainer", "        Remote Container", Container{""}}, other},
        {{"UseConvTable", "Use Conversion Table", Bool{0}}, input && other},
        {{"ConvTableName", "    Conversion Table Name", String{"", 200, 50}}, input && other},
    }};
    for (const BindingParameter& each : parameters) {
        registerParameter(each.parameter);
        if (!each.offered) {
            evHideParameter();
        }
    }
}

void registerReaderParameters() {
    evSetPersistent(1);
    for (const Parameter& parameter : READER_PARAMETERS) {
        registerParameter(parameter);
    }
}

}  // namespace intake
