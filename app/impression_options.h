// The options of `vesko print`, in one place for the command and its help.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace vesko_app {

struct OptionsImpression {
  std::string base;
  std::string type;
  std::string date;  // YYYY-MM-DD; empty = the system's date
  std::string pdf;
  std::string imprimante;
  std::string texte;
  std::string json;
  std::vector<std::string> cles;
};

inline void DeclareOptionsImpression(CLI::App& print, OptionsImpression& o) {
  print.add_option("--db", o.base, "Fichier de la base (SQLite)")->required();
  print.add_option("--type", o.type, "Type de dossier : AIDE ou AIDANT")->required();
  print.add_option("--date", o.date, "Date du jour de l'impression (AAAA-MM-JJ)");
  print.add_option("--pdf", o.pdf, "Écrit le document dans ce fichier PDF");
  print.add_option("--printer", o.imprimante, "Imprime sur cette file d'impression");
  print.add_option("--text", o.texte, "Écrit le document au format texte");
  print.add_option("--json", o.json, "Écrit le document au format JSON");
  print.add_option("cles", o.cles, "Clés des personnes ( - : lues sur l'entrée standard)")
      ->required();
}

}  // namespace vesko_app
