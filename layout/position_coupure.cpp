// The word-wrap rule: where to cut a piece of text so that no word is split.
#include "control/ctr_vesko.h"
#include "marbrel/texte.h"

std::int32_t Ctr_Vesko::Position_Coupure(const std::string& Texte) {
  long p = texte::Len(Texte);
  // Walk back from the end until a space lies at or after p.
  while (p > 0 && texte::InStr(p, Texte, " ") == 0) --p;
  if (p == 0) return static_cast<std::int32_t>(texte::Len(Texte));
  return static_cast<std::int32_t>(p - 1);
}
