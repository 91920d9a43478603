#pragma once

#include <string>

#include "workbench/cli/run/LiveScene.h"
#include "workbench/cobalt/Store.h"

namespace workbench {

/// The fields of a store as JSON, with who wrote them and when. Host's thread.
std::string fieldsJson(const cobalt::Store& store, const LiveScene& scene);

/// A page of the entries of a field as JSON. Host's thread.
std::string entriesJson(const cobalt::Field& field, const LiveScene& scene, std::size_t from,
                        std::size_t count);

}  // namespace workbench
