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
  // Outputs: one at a time; none on a terminal asks for a printer.
  std::string pdf;
  std::string imprimante;
  std::string texte;
  std::string json;
  std::string png;  // a folder
  bool apercu = false;
  // For a print queue.
  std::string pdf_secours;
  bool attendre = false;
  std::string copies = "1";               // checked by the command, for a French message
  std::string papier;                     // "" : the queue's default paper, else A4
  std::string delai;                      // --timeout of --wait, in seconds ("" : none)
  std::vector<std::string> options_cups;  // -o NOM=VALEUR, as lp takes them
  std::vector<std::string> cles;
  std::string journal;  // the access journal; "" = VESKO_JOURNAL or beside the store
};

// The resolution of `--png` images: legible A4 pages of a reasonable size.
inline constexpr int kDpiPng = 150;

inline void DeclareOptionsImpression(CLI::App& print, OptionsImpression& o) {
  print.add_option("--db", o.base,
                   "Base : un fichier SQLite, ou postgresql://utilisateur@hôte/base (défaut : "
                   "VESKO_DB)");
  print.add_option("--type", o.type, "Type de dossier : AIDE ou AIDANT")->required();
  print.add_option("--date", o.date, "Date du jour de l'impression (AAAA-MM-JJ)");
  print.add_option("--pdf", o.pdf,
                   "Écrit le document dans ce fichier PDF (- : sur la sortie standard)");
  print.add_option("--printer", o.imprimante, "Imprime sur cette file d'impression (CUPS)");
  print.add_option("--text", o.texte, "Écrit le document au format texte");
  print.add_option("--json", o.json, "Écrit le document au format JSON");
  print.add_option("--png", o.png, "Écrit une image PNG par page dans ce dossier (150 ppp)");
  print.add_flag("--preview", o.apercu, "Montre le document dans l'aperçu avant impression");
  print.add_option("--fallback-pdf", o.pdf_secours,
                   "Si l'imprimante ne peut pas imprimer, écrit le document dans ce PDF");
  print.add_flag("--wait", o.attendre,
                 "Attend la fin du travail d'impression et dit s'il a réussi");
  print.add_option("--copies", o.copies, "Nombre d'exemplaires (imprimante seulement)");
  print.add_option(
      "--paper", o.papier,
      "Format du papier : A4, A3 ou Letter (défaut : celui de l'imprimante, sinon A4)");
  print.add_option("--timeout", o.delai,
                   "Avec --wait : abandonne l'attente après ce nombre de secondes (statut 1)");
  print
      .add_option("-o", o.options_cups,
                  "Option du travail d'impression NOM=VALEUR, comme lp -o (répétable)")
      ->allow_extra_args(false);
  print.add_option("--journal", o.journal,
                   "Journal des impressions (défaut : VESKO_JOURNAL, sinon BASE.journal)");
  print.add_option("cles", o.cles, "Clés des personnes ( - : lues sur l'entrée standard)")
      ->required();
}

}  // namespace vesko_app
