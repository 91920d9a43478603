#pragma once

#include <string>

#include "plugin/HostRecord.h"

namespace intake {

/// The command text of a load with the instance's present parameter values. For the EXCEL query
/// type it first derives the connection string and the query and stores them in the parameters.
/// Host's thread.
std::string buildCommandText(ReaderParams& params);

}  // namespace intake
