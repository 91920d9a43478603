#pragma once

#include <cstddef>
#include <cstdint>

namespace intake {

class Intake;

/// The values of the reader's own parameters as the host lays them out: in registration order, each
/// aligned to its size; a push button takes no room. The texts are the host's buffers, each as long
/// as its parameter was registered; a text that the host never set may be null.
struct ReaderParams {
    int32_t queryMode;
    char* filename;
    char* sheet;
    char* connStr;
    int32_t useAuth;
    char* userName;
    char* password;
    int32_t avoidCache;
    char* query;
    char* xpath;
    char* namespaces;
    char* key;
    char* fromRow;
    char* numRows;
    char* range;
    char* table;
    int32_t mode;
    char* postAction;
    int32_t shmtype;
    char* shmvar;
    char* delimiter;
    char* rowsDelimiter;
    int32_t inputFormat;
    int32_t outputFormat;
    int32_t show_data;
    char* varsPrefix;
    int32_t logLevel;
    int32_t autoLoad;
    float autoLoadInterval;
    int32_t enableProxy;
    int32_t proxyMode;
    char* proxyUrl;
    char* proxyUser;
    char* proxyPwd;
    int32_t useCustomHeaders;
    char* customHeaders;
};

/// The block of values that the host keeps per plugin instance and passes to every entry point. The
/// host owns it and stores all but the instance with the scene.
struct HostRecord {
    int32_t Magic;
    char* FieldName;
    int32_t ValChangeNotify;
    int32_t IsRemote;
    int32_t IsOther;
    int32_t WhichOther;
    char* RemoteContainer;
    int32_t UseConvTable;
    char* ConvTableName;
    Intake* instance;  // null until one is made
    ReaderParams params;
};

/// What Magic says about the instance.
enum : int32_t {
    MAGIC_CREATED = 1,   // still to be made
    MAGIC_RECREATE = 2,  // to be made again and synchronised
    MAGIC_BOUND = 9473,
};

/// The choice of WhichOther that means the container named by RemoteContainer.
constexpr int32_t OTHER_IS_REMOTE = 3;

enum QueryMode : int32_t { QUERY_EXCEL, QUERY_SQL, QUERY_XML, QUERY_JSON, QUERY_HTML };

// The offsets that the host computes from the registration.
static_assert(sizeof(void*) == 8 && sizeof(float) == 4);
static_assert(offsetof(HostRecord, Magic) == 0);
static_assert(offsetof(HostRecord, FieldName) == 8);
static_assert(offsetof(HostRecord, ValChangeNotify) == 16);
static_assert(offsetof(HostRecord, WhichOther) == 28);
static_assert(offsetof(HostRecord, RemoteContainer) == 32);
static_assert(offsetof(HostRecord, UseConvTable) == 40);
static_assert(offsetof(HostRecord, ConvTableName) == 48);
static_assert(offsetof(HostRecord, instance) == 56);
static_assert(offsetof(HostRecord, params) == 64);
static_assert(offsetof(ReaderParams, queryMode) == 0);
static_assert(offsetof(ReaderParams, filename) == 8);
static_assert(offsetof(ReaderParams, connStr) == 24);
static_assert(offsetof(ReaderParams, userName) == 40);
static_assert(offsetof(ReaderParams, query) == 64);
static_assert(offsetof(ReaderParams, table) == 120);
static_assert(offsetof(ReaderParams, mode) == 128);
static_assert(offsetof(ReaderParams, postAction) == 136);
static_assert(offsetof(ReaderParams, shmvar) == 152);
static_assert(offsetof(ReaderParams, rowsDelimiter) == 168);
static_assert(offsetof(ReaderParams, inputFormat) == 176);
static_assert(offsetof(ReaderParams, show_data) == 184);
static_assert(offsetof(ReaderParams, varsPrefix) == 192);
static_assert(offsetof(ReaderParams, logLevel) == 200);
static_assert(offsetof(ReaderParams, autoLoadInterval) == 208);
static_assert(offsetof(ReaderParams, enableProxy) == 212);
static_assert(offsetof(ReaderParams, proxyMode) == 216);
static_assert(offsetof(ReaderParams, proxyUrl) == 224);
static_assert(offsetof(ReaderParams, useCustomHeaders) == 248);
static_assert(offsetof(ReaderParams, customHeaders) == 256);
static_assert(sizeof(ReaderParams) == 264);

}  // namespace intake
