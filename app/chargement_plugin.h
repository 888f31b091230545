// Whether a plugin file loads where it lies: tried in a child process, so
// that the control's code never meets this program's own copy of it, and a
// plugin that crashes while loading cannot take the command down.
#pragma once

#include <string>

namespace vesko_app {

// "" when the file loads with every library it needs; otherwise the loader's
// reason (the library not found, most often).
std::string EssaieChargement(const std::string& plugin);

}  // namespace vesko_app
