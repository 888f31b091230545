// The store a command works on: --db, or VESKO_DB when --db is absent.
#pragma once

#include <cstdlib>
#include <string>

#include "app/commandes.h"

namespace vesko_app {

inline std::string NomDeBase(const std::string& option) {
  if (!option.empty()) return option;
  const char* env = std::getenv("VESKO_DB");
  if (env != nullptr && *env != '\0') return env;
  throw UsageError(
      "aucune base : --db BASE (un fichier ou postgresql://…) ou la variable "
      "VESKO_DB.");
}

}  // namespace vesko_app
