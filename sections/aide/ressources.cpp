// The care recipient's resources: a framed table of incomes and allowances,
// then the family quotient and the total of the amounts printed.
#include <optional>

#include "control/ctr_vesko.h"
#include "db/lecture.h"
#include "layout/lignes.h"
#include "marbrel/outils.h"
#include "marbrel/texte.h"

namespace {

// Only twelve rows fit in the frame; later resources are neither printed nor
// counted, so the total always matches what the reader sees.
constexpr long kLignesRessources = 12;
constexpr long kLargeurNature = 35;

// The stored amount (hundredths of the unit) as a decimal text in units,
// "123456" → "1234.56", shifted on the digits so that nothing is rounded on
// the way. Text that is not a number is passed on as it is.
std::string Unites(const std::string& centiemes) {
  if (!marbrel::EstNumerique(centiemes)) return centiemes;
  std::string signe, chiffres = centiemes;
  if (chiffres[0] == '-' || chiffres[0] == '+') {
    signe = chiffres.substr(0, 1);
    chiffres.erase(0, 1);
  }
  std::string entier = chiffres, fraction;
  if (size_t point = chiffres.find('.'); point != std::string::npos) {
    entier = chiffres.substr(0, point);
    fraction = chiffres.substr(point + 1);
  }
  if (entier.size() < 3) entier.insert(0, 3 - entier.size(), '0');
  return signe + entier.substr(0, entier.size() - 2) + "." + entier.substr(entier.size() - 2) +
         fraction;
}

// An amount as the section prints it: fixed-point, 4 integer positions and 2
// decimals; "" when the stored text is empty or not a number.
std::string Montant(const std::string& centiemes) {
  return marbrel::Outils::Instance().Format_Montant(Unites(centiemes), 4, 2, 0);
}

// The value of a printed amount, in hundredths, read back from its text.
std::optional<long long> Valeur(const std::string& montant) {
  size_t debut = montant.find_first_not_of(' ');
  if (debut == std::string::npos) return std::nullopt;
  return marbrel::Centimes(montant.substr(debut));
}

// "P", "C" and "A" become five-letter words so that the columns stay aligned;
// any other code prints as stored.
std::string Mot_Type(const std::string& code) {
  if (code == "P") return "Prin.";
  if (code == "C") return "Compl";
  if (code == "A") return "Autre";
  return code;
}

std::string Mot_Droit(const std::string& code) {
  if (code == "P") return "Pers.";
  if (code == "C") return "Conj.";
  if (code == "A") return "Autre";
  return code;
}

// Right-aligned in the 8-character amount column.
std::string Colonne_Montant(const std::string& montant) {
  return texte::Space(8 - texte::Len(montant)) + montant;
}

}  // namespace

void Ctr_Vesko::Ressource_Aide(std::string& W_Code) {
  TabDyn& ressources = db::Lit(Fic::RESSOURCESAIDE, W_Code);
  Titre("RESSOURCES");
  mise_en_page::Blanc(P());

  W_PointDepart = Monnaie::De(P().CurrentY());
  P().Print("               Nature                Type        Allocation       Droit   Montant ");

  // A non-numeric amount cannot be added: the row prints without it and the
  // user is told which value was left out of the total.
  auto signale = [&](const std::string& ou, const std::string& lu, const std::string& suite) {
    incidents_.push_back({"Ressource_Aide", W_Code,
                          "Nombre illisible « " + lu + " » dans RESSOURCESAIDE " + W_Code + ", " +
                              ou + " : " + suite + "."});
  };

  const long n = ressources.DCount(1);
  long long total = 0;  // hundredths, exact
  for (long i = 1; i <= n && i <= kLignesRessources; ++i) {
    std::string nature = ressources(1, i);
    if (texte::Len(nature) >= kLargeurNature) {
      nature = mise_en_page::Coupe(ressources, 1, i, kLargeurNature);
    }
    // The words replace the codes in the record held in memory, as the cut
    // natures do.
    const std::string type = Mot_Type(ressources(2, i));
    if (type != ressources(2, i)) ressources.Remplace(2, i, type);
    const std::string droit = Mot_Droit(ressources(4, i));
    if (droit != ressources(4, i)) ressources.Remplace(4, i, droit);
    const std::string allocation = ressources(3, i);

    const std::string stocke = ressources(5, i);
    const std::string montant = Montant(stocke);
    if (montant.empty() && !stocke.empty()) {
      signale("attribut 5, valeur " + std::to_string(i), stocke,
              "la ressource est imprimée sans montant et n'entre pas dans le total");
    }

    P().Print("  " + texte::Pad(nature, kLargeurNature) + type + "  " + texte::Pad(allocation, 20) +
              "  " + droit + "  " + Colonne_Montant(montant));
    if (auto v = Valeur(montant)) total += *v;
  }

  // No filler rows: the frame always spans the header and twelve rows, and
  // the lines that follow a short table fall inside it.
  Taille_Col = mise_en_page::Largeurs({"6.5", "1.4", "5.3", "1.4", "2.5"});
  Cadre_Gauche = true;
  Cadre(W_PointDepart, kLignesRessources + 1, Taille_Col);
  mise_en_page::Ligne_Vide(P());
  mise_en_page::Ligne_Vide(P());

  const std::string libelle_quotient = "  Quotient famillial :";
  if (n == 0) {
    P().Print(libelle_quotient + texte::Space(43) + "Total :");
    return;
  }
  const std::string T =
      Colonne_Montant(Montant(std::to_string(total)));  // the total is already in hundredths
  const std::string quotient = ressources(6);
  if (quotient.empty()) {
    P().Print(libelle_quotient + texte::Space(43) + "Total :" + T);
    return;
  }
  const std::string Q = Montant(quotient);
  if (Q.empty()) signale("attribut 6", quotient, "le quotient familial est imprimé vide");
  // The gap after the quotient counts the characters of the stored value, not
  // of the printed one: "Total :" moves with the length of the stored text.
  P().Print(libelle_quotient + Colonne_Montant(Q) + texte::Space(40 - texte::Len(quotient)) +
            "Total :" + T);
}
