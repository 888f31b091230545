// The sub-commands of `vesko`. Each family adds its own sub-commands to the
// application; their callbacks run through Execute so that every failure ends
// as one French line on standard error and exit status 1.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace vesko_app {

// Exit statuses of every command.
inline constexpr int kSucces = 0;
inline constexpr int kEchec = 1;
inline constexpr int kUsage = 2;

// Runs action; a thrown error is written as "vesko : <message>" on standard
// error and sets statut to kEchec (an UsageError sets kUsage).
void Execute(int& statut, const std::function<void()>& action);

// Thrown by a command whose arguments are wrong in a way CLI11 cannot see.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// init, import, export, select.
void AjouteCommandesDonnees(CLI::App& app, int& statut);
// print.
void AjouteCommandeImpression(CLI::App& app, int& statut, int& argc, char** argv);
// journal, journal verifie, journal purge.
void AjouteCommandeJournal(CLI::App& app, int& statut);
// printers: the print server's queues, their state and the default.
void AjouteCommandeImprimantes(CLI::App& app, int& statut, int& argc, char** argv);
// component register|unregister|info.
void AjouteCommandeComposant(CLI::App& app, int& statut, int& argc, char** argv);

}  // namespace vesko_app
