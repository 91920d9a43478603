#pragma once

// CobaltLib: the client library of the host's shared data store, Cobalt.
//
// Everything here is supplied by the host and called on the host's thread only. Texts are
// zero-terminated; a text that is passed in belongs to the caller and is copied when it must
// outlive the call. Fields and stores belong to the library.

#include <cstdarg>
#include <cstdint>

#include "host/linkage.h"

class Cobalt;
class DataField;

/// What a field of the data store holds.
enum class DataType : int32_t { Unused, Text, Number, Structure, Array };

/// One named field of a data store. Owned by its store.
class HOST_API DataField {
public:
    virtual ~DataField();

    /// Sets the field's value from a text and tells its watchers.
    virtual void setValue(const char* text) = 0;
};

/// A data store. A scene has one; it lives as long as its scene.
class HOST_API Cobalt {
public:
    virtual ~Cobalt();

    /// The field of that name, or null. The two numbers are always 0 and 1.
    virtual DataField* findField(const char* name, int32_t create, int32_t local) = 0;

    /// Parses `text` as a sequence of assignments and carries them out. Returns 1, or 0 when the
    /// text does not parse, in which case nothing changes. The number is always 0.
    virtual int32_t executeScript(const char* text, int32_t flags) = 0;
};

/// Through this the expression engine asks the owner of an expression for the text of a macro.
class HOST_API DataVariableQuery {
public:
    virtual ~DataVariableQuery();

    /// The text that stands for `macro`, or null when there is none. The callee's, valid until the
    /// next query.
    virtual const char* queryVariable(const char* macro) = 0;
};

/// Sends a host command; see _api__lumo_send_command.
using DataCommandFunction = int32_t (*)(const char* command, const char** answer);

/// A parsed data-store expression that can be executed many times.
class HOST_API DataExpression {
public:
    DataExpression();
    ~DataExpression();
    DataExpression(const DataExpression&) = delete;
    DataExpression& operator=(const DataExpression&) = delete;

    /// Who is asked for macros. Not owned; null for nobody.
    void setVariableQuery(DataVariableQuery* query);

    /// The store and the field in whose names relative expressions are read.
    void setHostField(Cobalt* store, DataField* field);

    /// Replaces the expression. An empty text is an expression that does nothing. Returns 1, or 0
    /// when the text does not parse; the expression is then empty.
    int32_t parse(const char* text);

    /// Executes the expression against `store`; `command` carries out host commands. Returns 1 on
    /// success. The number is always 0.
    int32_t executeExtended(Cobalt* store, DataCommandFunction command, int32_t flags);

private:
    void* implementation_;
};

/// What a data-store client is bound to: a field of the store of its scene.
class HOST_API IDataHandler {
public:
    IDataHandler();
    virtual ~IDataHandler();
    IDataHandler(const IDataHandler&) = delete;
    IDataHandler& operator=(const IDataHandler&) = delete;

    /// Prepares the handler for the container with this identity.
    void init(int32_t container);

    /// The store that the handler is bound to.
    Cobalt* getCobalt();

    /// The field that the handler is bound to, or null before binding.
    DataField* getField();

    /// Changes are told only when the value really differs from the last one.
    void setNotifyOnValueChange(int32_t on);

    void setUseConvTable(int32_t on);
    void setConvTableNmae(const char* name);  // the library's own spelling

    /// Reads the field again and tells the handler its value.
    void refresh();

private:
    void* implementation_;
};

/// Where a plugin instance stands in the scene, and which container it binds to instead of its own.
class HOST_API lumoPluginData {
public:
    /// Takes the identity of the container, or scene, that the running instance belongs to.
    void setLocalContainer();
    void setLocalScene();

    /// The container that is meant when WhichOther is 3.
    void setRemoteContainer(const char* container);

    int32_t container = -1;
    int32_t scene = -1;
    int32_t IsOther = 0;
    int32_t WhichOther = 0;  // 0 PARENT, 1 GrPARENT, 2 GrGrPARENT, 3 REMOTE
};

/// Base of all plugins that work on the data store. The virtual operations stand in the order in
/// which the library and the host's frame call them by slot; it must not change.
class HOST_API lumoDataHandler : public IDataHandler, public lumoPluginData {
public:
    lumoDataHandler();
    ~lumoDataHandler() override;

    virtual const char* getName() = 0;
    virtual const char* getFolder() = 0;
    virtual int32_t getType() = 0;
    virtual const char* getVersion() = 0;
    virtual DataType getFieldType();

    /// Which binding parameters the editor offers: bit 0 input field, bit 1 output field, bit 2
    /// another container than the own one.
    virtual int32_t getFlags() = 0;

    virtual const char* getInfo() = 0;
    virtual void registerParameters() = 0;
    virtual void syncParameters() = 0;
    virtual void initialize() = 0;
    virtual void cleanup() = 0;
    HOST_OVERLOADS(virtual void onDataChange(const char* name, const char* const* texts,
                                             int32_t count, int32_t flags),
                   virtual void onDataChange(const char* name, const char* value));
    virtual void onTypeChange(DataType type);
    virtual void onParameterChanged(int32_t index) = 0;
    virtual void onExecAction(int32_t action, void* parameters) = 0;
    virtual void onBuildGeometry(int32_t reason);
    virtual void onDispatcher(int32_t code, void* data, void** out);
    virtual void onGuiStatus() = 0;
    virtual void onExecPerField() = 0;
    virtual void dump();
    virtual void Register(const char* field, int32_t flag);
    virtual void RegisterField(const char* field, int32_t flag);
    virtual void Unregister();
    virtual void onSyncParams();

    /// The text that stands for `macro` in an expression, or null.
    virtual const char* parseMacro(const char* macro);

    /// Prepares a handler that holds a container of fields. Not virtual.
    void initContainer();

    /// The instance's own parameters inside the host's record, set by the frame before it calls
    /// into the instance. Not owned.
    void* params = nullptr;
};

/// The library's own registry of stores.
class HOST_API IDataHandlerImpl {
public:
    /// The store of a scene. It is made when there is none and `create` is set; else null.
    static Cobalt* getCobalt(int32_t scene, bool create);
};

extern "C" {

/// Carries out the initialisation that the library put off until after the scene was loaded.
HOST_API void initCobalt();

/// Whether such an initialisation is pending.
HOST_API int32_t getInitCB();
HOST_API void setInitCB(int32_t pending);

/// The library's debug level for what follows.
HOST_API void DataDebug(int32_t level);

/// Where the library prints.
HOST_API void DataSetPrintfFunction(int32_t (*print)(const char* format, ...));
HOST_API void DataSetWPrintfFunction(int32_t (*print)(const wchar_t* format, ...));
HOST_API void DataSetVPrintfFunction(int32_t (*print)(const char* format, va_list arguments));
HOST_API void DataSetVWPrintfFunction(int32_t (*print)(const wchar_t* format, va_list arguments));

}  // extern "C"
