#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/soak/documents.h"

namespace intake {

/// One source of the soak: a file, or a document that a server makes when it is asked. The
/// rewriting thread renews it; any thread may ask for its version.
class Source {
public:
    enum class Place { FILE, SERVER };

    Source(Kind kind, int number, Place place) : kind_(kind), number_(number), place_(place) {}

    Kind kind() const { return kind_; }
    int number() const { return number_; }

    /// The field of the data store that shows it.
    std::string table() const { return "T" + std::to_string(number_); }

    /// The newest version that anybody may have seen. The first is 1.
    int version() const { return version_; }

    /// What it holds at present.
    std::string document() const { return documentOf(kind_, number_, version_); }

    /// The version that a script shows, if it is a whole one that there is or was.
    std::optional<int> versionShownBy(const std::string& script) const;

    /// The values of the parameters that load it; what a server serves has its URL before its name.
    std::vector<std::pair<std::string, std::string>> parameters(const std::string& server) const;

    /// Makes the next version. A file is replaced by another one; some databases are changed in
    /// place, by one transaction.
    void renew();

    /// Whether it can be taken away for a while: not a database that is changed in place, whose
    /// journal would be taken for that of another file.
    bool isRemovable() const { return place_ == Place::FILE && !isChangedInPlace(); }
    void remove() const;

private:
    bool isChangedInPlace() const { return kind_ == Kind::SQL && number_ % 2 == 0; }
    std::string fileName() const;
    void writeFile() const;

    const Kind kind_;
    const int number_;
    const Place place_;
    std::atomic<int> version_ = 0;
};

}  // namespace intake
