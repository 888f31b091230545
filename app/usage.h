// The command line in French: CLI11's help ("Utilisation :", groups, labels)
// and its parse errors, which it writes in English, turned into one French
// line naming what is wrong (the option, the argument, the unknown word).
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace vesko_app {

// Before any sub-command is added (they inherit it): the French help
// formatter, the help and version flags.
void PrepareUsageFrancais(CLI::App& app, const std::string& version);
// Once every sub-command is added: their group title.
void TermineUsageFrancais(CLI::App& app);

// When the first word that is not an option names no sub-command: the French
// line that names it and lists the sub-commands.
std::optional<std::string> SousCommandeInconnue(const CLI::App& app, int argc, char** argv);

// The French line for a parse error of app (without "vesko : "), ending with
// where to find help ("vesko print --help pour l'aide").
std::string MessageUsage(const CLI::App& app, const CLI::ParseError& erreur);

}  // namespace vesko_app
