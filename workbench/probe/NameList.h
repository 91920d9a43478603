#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace probe {

/// Names, each once, in order of appearance. Quick where the same ones come again in the same
/// order, as those of records do. Plain value; any thread.
class NameList {
public:
    void add(std::string_view name);

    const std::vector<std::string>& names() const { return names_; }

private:
    std::vector<std::string> names_;
    std::unordered_map<std::string, std::size_t> positions_;
    std::size_t next_ = 0;  // where the name that comes next probably stands
};

}  // namespace probe
