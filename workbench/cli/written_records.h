#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/cobalt/script_parser.h"
#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// How many records a load has written: `written` is the script that was executed, in Shared Memory
/// mode the text that was stored. What the plugin itself reports may count others: those without a
/// key, those that another of the same key has replaced. By target mode,
///
///     DataTable, DataArray   the entries that are set, each key once
///     DataStructure          the fields that are set, but the plugin's own count
///     Data Field Array       the elements
///     Shared Memory          the pieces into which the delimiter divides the text; an empty text
///                            has none
///
/// JSON that is loaded without a path is one record in every mode but Shared Memory, or as many as
/// the array that it is has elements.
std::size_t writtenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                           const lumo::Record& record);

/// A plain field, or a plain member of a structure, that a script sets to a number.
struct WrittenNumber {
    std::string name;  // "Score.home"
    double value = 0;
    bool isText = false;  // it is written as a text that reads as a number
};

/// What a load has written, read once. Refers to the text.
class WrittenRecords {
public:
    WrittenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                   const lumo::Record& record);

    /// As writtenRecords() says.
    std::size_t count() const;

    /// A number for each record, which is another for another record, in rising order. Records are
    /// the same when all their values are and, where they are named by a key, that too. Nothing
    /// when so much was written that looking through it would hold up the host.
    std::optional<std::vector<std::uint64_t>> marks() const;

    /// The numbers that were set; some hundred at most.
    std::vector<WrittenNumber> numbers() const;

private:
    enum class Mode { Table, Array, Structure, FieldArray, SharedMemory };

    // What decides how records are counted, from the record of the instance.
    struct Settings {
        Mode mode;
        bool isQuery;  // of a database or a worksheet: their records are rows of several fields
        bool isWhole;  // JSON without a path to records: the document itself is written
        bool hasKey;   // records are named by it, and else by their place
        std::string prefix;
        std::string delimiter;
        std::string rowsDelimiter;

        const std::string& recordDelimiter() const { return isQuery ? rowsDelimiter : delimiter; }
    };
    static Settings settingsOf(const lumo::ParameterTable& parameters, const lumo::Record& record);
    friend bool isCountable(const lumo::ParameterTable& parameters, const lumo::Record& record);
    friend void requireCountable(const lumo::ParameterTable& parameters,
                                 const lumo::Record& record);

    std::size_t countEntries() const;
    std::size_t countFields() const;
    std::size_t countElements() const;
    std::size_t countWhole() const;
    bool isCount(std::string_view name) const;
    std::vector<std::string_view> pieces() const;
    std::vector<std::uint64_t> marksOfNamed() const;
    std::vector<std::uint64_t> marksOfElements() const;

    const std::string_view written_;
    const Settings settings_;
    cobalt::Assignments assignments_;  // none in Shared Memory mode
};

/// False when records cannot be told apart in the text of a shared memory.
bool isCountable(const lumo::ParameterTable& parameters, const lumo::Record& record);

/// Throws UsageError when records could not be told apart in the text of a shared memory.
void requireCountable(const lumo::ParameterTable& parameters, const lumo::Record& record);

}  // namespace workbench
