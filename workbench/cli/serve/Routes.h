#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/serve/WebServer.h"

namespace workbench {

/// A request, and what the stars of its route's path stand for.
struct Call {
    serve::WebRequest request;
    std::vector<std::string> names;
    serve::Reply reply;

    const std::string& name() const { return names.front(); }
};

/// One route of a group, which is the class that answers it. The path is below /api/v1/; a star
/// stands for one name.
template <class Group>
struct Route {
    const char* method;
    const char* path;
    void (Group::*answer)(const Call& call);
};

/// Who answers what. Filled before the server begins, and then only read.
class Routes {
public:
    /// The group and its table outlive this object.
    template <class Group, std::size_t count>
    void add(Group& group, const Route<Group> (&table)[count]) {
        for (const Route<Group>& route : table)
            routes_.push_back({route.method, route.path, [&group, &route](const Call& call) {
                                   (group.*route.answer)(call);
                               }});
    }

    /// False when there is no route to the request.
    bool answer(const serve::WebRequest& request, const serve::Reply& reply) const;

private:
    struct Known {
        std::string_view method;
        std::string_view path;
        std::function<void(const Call&)> answer;
    };
    std::vector<Known> routes_;
};

}  // namespace workbench
