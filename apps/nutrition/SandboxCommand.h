#pragma once
// `nutrition sandbox [--port N] [--data-dir DIR]`: runs the sandbox backend in the foreground
// until interrupted, so a host developer can point a simulator or a device at it.

#include <string>
#include <vector>

namespace nutrition::cli {

int runSandbox(const std::vector<std::string>& arguments);

}  // namespace nutrition::cli
