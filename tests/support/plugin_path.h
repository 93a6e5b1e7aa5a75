// Where the Windows tests find the built plug-in: beside the test program itself.
#pragma once

#include <string>

namespace tessellum::test {

std::string BuildDirectory();  // the folder of the running test program, with a slash
std::string PluginPath();      // the plug-in built in that folder

}  // namespace tessellum::test
