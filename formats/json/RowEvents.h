#pragma once

#include <rapidjson/reader.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/json/JsonEvents.h"
#include "formats/json/json_rows.h"

namespace intake {

/// Takes the parser's events, follows the path and appends the entries of the wanted rows, and of
/// nothing else.
class RowEvents : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, RowEvents> {
public:
    using Length = JsonEvents::Length;

    /// Both are borrowed and outlive this object.
    RowEvents(JsonEvents& row, const JsonRowQuery& query) : row_(row), query_(query) {}

    /// How many rows there were, also those that are not wanted.
    int64_t found() const { return found_; }

    bool Null() {
        return scalar([this] { row_.Null(); });
    }
    bool Bool(bool value) {
        return scalar([this, value] { row_.Bool(value); });
    }
    bool RawNumber(const char* characters, Length length, bool copy) {
        return scalar([=, this] { row_.RawNumber(characters, length, copy); });
    }
    bool String(const char* characters, Length length, bool copy) {
        return scalar([=, this] { row_.String(characters, length, copy); });
    }
    bool Key(const char* characters, Length length, bool copy) {
        const bool fits = row_.Key(characters, length, copy);
        if (place_ == Place::BESIDE) {
            row_.dropName();
        }
        return fits;
    }
    bool StartObject() {
        return open(false, [this] { row_.StartObject(); });
    }
    bool StartArray() {
        return open(true, [this] { row_.StartArray(); });
    }
    bool EndObject(Length members) {
        return close([=, this] { row_.EndObject(members); });
    }
    bool EndArray(Length elements) {
        return close([=, this] { row_.EndArray(elements); });
    }

private:
    enum class Place { PATH, ROW, BESIDE };

    /// A value on the path that has passed so many steps; of an array that has just matched, it is
    /// the elements that have.
    struct Passed {
        size_t steps;
        bool isMatchedArray;
    };

    template <class Append>
    bool scalar(Append append) {
        if (place_ == Place::ROW) {
            append();
        } else if (place_ == Place::PATH) {
            if (isRow(passed(false)) && countRow()) {
                append();
                query_.take();
            }
            row_.dropName();
        }
        return true;
    }

    template <class Append>
    bool open(bool isArray, Append append) {
        if (place_ == Place::PATH) {
            const auto value = passed(isArray);
            if (value && !isRow(value)) {
                open_.push_back(*value);
                row_.dropName();
                return true;
            }
            place_ = isRow(value) && countRow() ? Place::ROW : Place::BESIDE;
        }
        ++depth_;
        if (place_ == Place::ROW) {
            append();
        } else {
            row_.dropName();
        }
        return true;
    }

    template <class Append>
    bool close(Append append) {
        if (place_ == Place::PATH) {
            open_.pop_back();
            return true;
        }
        if (place_ == Place::ROW) {
            append();
        }
        if (--depth_ == 0) {
            leave();
        }
        return true;
    }

    void leave() {
        if (place_ == Place::ROW) {
            query_.take();
        }
        place_ = Place::PATH;
    }

    /// What the next value has passed; nothing when it stands beside the path.
    std::optional<Passed> passed(bool isArray) const {
        if (open_.empty()) {
            return Passed{0, false};
        }
        const auto [steps, isMatchedArray] = open_.back();
        if (isMatchedArray) {
            return Passed{steps, false};
        }
        const std::string& wanted = query_.path[steps].name;
        if (wanted != "*" && wanted != row_.name()) {
            return std::nullopt;
        }
        return Passed{steps + 1, isArray};
    }

    bool isRow(const std::optional<Passed>& value) const {
        return value && !value->isMatchedArray && value->steps == query_.path.size();
    }

    /// Counts a row, and says whether it is wanted.
    bool countRow() {
        const int64_t row = found_++;
        return row >= query_.first && row < query_.end;
    }

    JsonEvents& row_;
    const JsonRowQuery& query_;
    std::vector<Passed> open_;  // the containers on the path
    Place place_ = Place::PATH;
    size_t depth_ = 0;  // of containers, in a row or beside the path
    int64_t found_ = 0;
};

}  // namespace intake
