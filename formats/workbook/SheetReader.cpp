#include "formats/workbook/SheetReader.h"

#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/cell_text.h"
#include "formats/workbook/read_part.h"

namespace intake {

namespace {

enum State : ElementPath::State {
    OUTSIDE,
    WORKSHEET,
    SHEET_DATA,
    ROW,
    CELL,
    VALUE,
    INLINE,
    INLINE_RUN,
    INLINE_TEXT
};

// The most frequent ones first.
constexpr std::array<ElementPath::Step, 9> STEPS{{
    {CELL, "v", VALUE},
    {ROW, "c", CELL},
    {SHEET_DATA, "row", ROW},
    {CELL, "is", INLINE},
    {INLINE, "t", INLINE_TEXT},
    {INLINE, "r", INLINE_RUN},
    {INLINE_RUN, "t", INLINE_TEXT},
    {WORKSHEET, "sheetData", SHEET_DATA},
    {OUTSIDE, "worksheet", WORKSHEET},
}};

constexpr double DAYS_FROM_1900_TO_1904 = 1462;
constexpr uint32_t NO_COLUMN = UINT32_MAX;  // the one before the first

}  // namespace

SheetReader::SheetReader(const CellStyles& styles, bool from1904, size_t expectedCells,
                         Sheet& sheet)
    : styles_(styles),
      dayOffset_(from1904 ? DAYS_FROM_1900_TO_1904 : 0),
      expectedCells_(expectedCells),
      sheet_(sheet),
      path_(STEPS) {}

void SheetReader::startDocument() {
    path_.restart();
    sheet_.restart(expectedCells_);
    worksheet_ = false;
    row_ = 0;
}

void SheetReader::startElement(std::string_view name, const XmlAttributes& attributes) {
    switch (path_.enter(name)) {
        case WORKSHEET:
            worksheet_ = true;
            break;
        case ROW:
            startRow(attributes);
            break;
        case CELL:
            startCell(attributes);
            break;
        case VALUE:
            hasValue_ = true;
            value_.clear();
            break;
        case INLINE:
            hasInline_ = true;
            inline_.clear();
            break;
        default:
            break;
    }
}

bool SheetReader::endElement() {
    const auto state = path_.leave();
    if (state == CELL) {
        endCell();
    } else if (state == ROW) {
        sheet_.endRow();
    }
    return state != SHEET_DATA;
}

void SheetReader::text(std::string_view text) {
    const auto state = path_.state();
    if (state == VALUE) {
        value_.append(text);
    } else if (state == INLINE_TEXT) {
        inline_.append(text);
    }
}

/// A row or cell without a reference follows the one before it.
void SheetReader::startRow(const XmlAttributes& attributes) {
    const std::string_view number = attributes.value("r");
    ++row_;
    if (!number.empty()) {
        const auto parsed = parseIndex(number);
        if (!parsed || *parsed == 0 || *parsed > MOST_ROWS) {
            throw WorkbookFault("has a row \"" + std::string(number) + "\", which cannot be");
        }
        row_ = static_cast<uint32_t>(*parsed);
    }
    sheet_.beginRow(row_);
    column_ = NO_COLUMN;
}

void SheetReader::startCell(const XmlAttributes& attributes) {
    type_ = Type::NUMBER;
    style_ = 0;
    hasValue_ = false;
    hasInline_ = false;
    value_.clear();
    ++column_;
    for (const XmlAttribute& attribute : attributes) {
        if (attribute.name == "r") {
            column_ = columnOf(attribute.value).value_or(MOST_COLUMNS);
        } else if (attribute.name == "t") {
            type_ = typeNamed(attribute.value);
        } else if (attribute.name == "s") {
            style_ = parseIndex(attribute.value).value_or(0);
        }
    }
    if (column_ >= MOST_COLUMNS) {
        throw WorkbookFault("has a cell in no column, in row " + std::to_string(row_));
    }
}

SheetReader::Type SheetReader::typeNamed(std::string_view name) {
    struct Row {
        std::string_view name;
        Type type;
    };
    static constexpr std::array<Row, 7> TYPES{{
        {"s", Type::SHARED},
        {"n", Type::NUMBER},
        {"b", Type::BOOLEAN},
        {"e", Type::ERROR},
        {"d", Type::DATE},
        {"str", Type::TEXT},
        {"inlineStr", Type::INLINE},
    }};
    for (const Row& row : TYPES) {
        if (row.name == name) {
            return row.type;
        }
    }
    return Type::TEXT;
}

/// Of a value and a text in the cell itself the type tells which one counts.
void SheetReader::chooseValue() {
    if (hasInline_ && (type_ == Type::INLINE || !hasValue_)) {
        type_ = Type::TEXT;
        hasValue_ = true;
        value_.swap(inline_);
    } else if (type_ == Type::INLINE) {
        type_ = Type::TEXT;
    }
}

void SheetReader::endCell() {
    chooseValue();
    if (!hasValue_ || (value_.empty() && type_ != Type::TEXT)) {
        return;
    }
    switch (type_) {
        case Type::NUMBER:
            addNumber();
            break;
        case Type::SHARED:
            addSharedText();
            break;
        case Type::TEXT:
        case Type::INLINE:
            decodeEscapes(value_);
            sheet_.addText(column_, value_);
            break;
        case Type::BOOLEAN:
            sheet_.addNumber(column_, CellKind::BOOLEAN, value_ == "1" || value_ == "true" ? 1 : 0);
            break;
        case Type::ERROR:
            sheet_.addBlank(column_);
            break;
        case Type::DATE:
            addDate();
            break;
    }
}

void SheetReader::addNumber() {
    const auto number = parseNumber(value_);
    if (!number) {
        sheet_.addText(column_, value_);
    } else if (styles_.isDate(style_)) {
        const double offset = styles_.hasDay(style_) ? dayOffset_ : 0;
        sheet_.addNumber(column_, CellKind::DATE, *number + offset);
    } else {
        sheet_.addNumber(column_, CellKind::NUMBER, *number);
    }
}

void SheetReader::addSharedText() {
    const auto number = parseIndex(value_);
    if (!number) {
        throw WorkbookFault("has a cell in row " + std::to_string(row_) +
                            " that holds the shared text \"" + value_ + "\", which cannot be");
    }
    sheet_.addSharedText(column_, *number);
}

void SheetReader::addDate() {
    const auto date = parseIsoDate(value_);
    if (date) {
        sheet_.addNumber(column_, CellKind::DATE, *date);
    } else {
        sheet_.addText(column_, value_);
    }
}

// In this file, so that the compiler can inline the functions above into the scanner.
bool SheetReader::read(const ZipArchive& archive, const ZipEntry& part, const EndMark& endMark) {
    readLargePart(archive, part, "</row>", *this, endMark);
    sheet_.end();
    return worksheet_;
}

}  // namespace intake
