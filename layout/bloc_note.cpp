// The notes ("bloc-notes") that end every dossier, wrapped to the page width,
// with their own page breaking.
#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "db/variable.h"
#include "marbrel/texte.h"

namespace {

const std::string kRetourLigne = "\r\n";
constexpr long kLargeur = 76;

}  // namespace

void Ctr_Vesko::Bloc_Note(TabDyn& W_Bloc, std::string& W_Code) {
  // Nothing in the loop changes the record, so the text is read once. Notes
  // held as several values start a new line at each, like a stored break.
  const std::string notes = texte::Marques_En_Retours(W_Bloc.Extrait(1, -1, -1));
  const long longueur = texte::Len(notes);
  long i = 1;           // next character to print
  std::int32_t T = 0;   // lines printed by this block
  std::int32_t Pg = 0;  // lines printed since the block's latest page break

  // The strict less-than is the block's standing rule: a lone final character
  // is never printed, so a one-character note prints nothing.
  while (i < longueur) {
    // A line break within reach is honoured before any cut at a space.
    const long q = texte::InStr(i, notes, kRetourLigne);
    if (q != 0 && q <= i + kLargeur) {
      P().Print(" " + texte::Mid(notes, i, q - i));
      i = q + 2;
    } else if (longueur > i + kLargeur) {
      const std::string morceau = texte::Mid(notes, i, kLargeur);
      const std::int32_t c = Position_Coupure(morceau);
      P().Print(" " + texte::Left(morceau, c));
      // The character after the cut is dropped as the space it normally is;
      // in an unbroken run longer than the line it is a letter, and it is lost.
      i = i + c + 1;
    } else {
      P().Print(" " + texte::Mid(notes, i));
      i = longueur + 1;
    }

    // The block counts its own lines: the first 34 go where the section
    // starts, then 60 to a page under the running header (8 lines), which
    // fills a following page exactly.
    if (T == 33) {
      NewPage(W_Code);
      Pg = 0;
    } else if (T > 33 && Pg == 60) {
      NewPage(W_Code);
      Pg = 0;
    }
    T = T + 1;
    Pg = Pg + 1;
  }
}

namespace {

// The notes record of the person, or nothing to print: an absent record (or
// an empty code) leaves the section with its title alone.
void Imprime_Notes(Ctr_Vesko& controle, Fic fichier, std::string& W_Code) {
  TabDyn& notes = db::Lit(fichier, W_Code);
  if (notes.Vide()) return;
  controle.Bloc_Note(notes, W_Code);
}

}  // namespace

void Ctr_Vesko::Bloc_Note_Aidant(std::string& W_Code) {
  Titre("BLOC-NOTES");
  Imprime_Notes(*this, Fic::BLOCNOTAIDANT, W_Code);
}

void Ctr_Vesko::Bloc_Note_Aide(std::string& W_Code) {
  Titre("BLOC-NOTES");
  Imprime_Notes(*this, Fic::BLOCNOTAIDE, W_Code);
}
