#include "marbrel/query/dictionnaire.h"

#include <stdexcept>

#include "marbrel/marques.h"
#include "marbrel/texte.h"

namespace marbrel::requete {

namespace {

bool QueDesChiffres(std::string_view s) {
  if (s.empty() || s.size() > 9) return false;
  for (char c : s) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

std::string SansBlancs(std::string_view s) {
  std::string out;
  for (char c : s) {
    if (c != ' ' && c != '\t') out += c;
  }
  return out;
}

// "[start,length]" at the end of an I-type expression, or nothing at all.
bool LitSousChaine(std::string_view s, Item& item) {
  if (s.empty()) return true;
  if (s.front() != '[' || s.back() != ']') return false;
  std::string_view dedans = s.substr(1, s.size() - 2);
  std::size_t virgule = dedans.find(',');
  if (virgule == std::string_view::npos) return false;
  std::string_view debut = dedans.substr(0, virgule);
  std::string_view longueur = dedans.substr(virgule + 1);
  if (!QueDesChiffres(debut) || !QueDesChiffres(longueur)) return false;
  item.debut = std::stol(std::string(debut));
  item.longueur = std::stol(std::string(longueur));
  return item.debut >= 1;
}

std::string Coupe(const Item& item, std::string_view valeur) {
  if (item.debut == 0) return std::string(valeur);
  return texte::Mid(valeur, item.debut, item.longueur);
}

}  // namespace

Item ItemDepuis(const std::string& nom, const TabDyn& definition) {
  std::string type = texte::UpperAscii(texte::Left(definition(1), 1));
  Item item;
  std::string format = texte::UpperAscii(definition(5));
  std::size_t lettre = format.find_first_not_of("0123456789");
  item.numerique = lettre != std::string::npos && format[lettre] == 'R';
  item.texte = lettre != std::string::npos && format[lettre] == 'L';
  if (type == "D") {
    std::string numero = SansBlancs(definition(2));
    if (!QueDesChiffres(numero)) {
      throw std::invalid_argument("L'élément de dictionnaire « " + nom +
                                  " » n'a pas de numéro d'attribut valable (« " + numero + " »)");
    }
    item.attribut = std::stol(numero);
    return item;
  }
  if (type == "I") {
    std::string expr = SansBlancs(definition(2));
    std::string haut = texte::UpperAscii(expr);
    std::size_t suite = 0;
    if (haut.rfind("@ID", 0) == 0) {
      item.attribut = 0;
      suite = 3;
    } else if (haut.rfind("F", 0) == 0) {
      std::size_t fin = haut.find_first_not_of("0123456789", 1);
      if (fin == std::string::npos) fin = haut.size();
      if (!QueDesChiffres(haut.substr(1, fin - 1))) suite = std::string::npos;
      if (suite != std::string::npos) {
        item.attribut = std::stol(haut.substr(1, fin - 1));
        suite = fin;
      }
    } else {
      suite = std::string::npos;
    }
    if (suite == std::string::npos || !LitSousChaine(std::string_view(expr).substr(suite), item)) {
      throw std::invalid_argument("L'élément de dictionnaire « " + nom + " » a une expression (« " +
                                  definition(2) +
                                  " ») que les sélections ne savent pas calculer : seules @ID, "
                                  "@ID[début,longueur], Fn et Fn[début,longueur] le sont");
    }
    return item;
  }
  throw std::invalid_argument("L'élément de dictionnaire « " + nom + " » est de type « " +
                              definition(1) + " » : seuls les types D et I sont reconnus");
}

Item ResoutChamp(Store& store, const std::string& fichier, const std::string& nom) {
  if (QueDesChiffres(nom)) {
    Item item;
    item.attribut = std::stol(nom);
    return item;
  }
  std::string dict = "DICT " + fichier;
  if (!store.ExisteFichier(dict)) {
    throw std::invalid_argument("Champ inconnu « " + nom + " » : le fichier " + fichier +
                                " n'a pas de dictionnaire (" + dict + ")");
  }
  std::optional<std::string> definition = store.Lit(dict, nom);
  if (!definition) {
    throw std::invalid_argument("Champ inconnu « " + nom + " » : absent de " + dict);
  }
  return ItemDepuis(nom, TabDyn(std::move(*definition)));
}

std::vector<std::string> Item::Valeurs(const std::string& cle, const TabDyn& enregistrement) const {
  if (attribut == 0) return {Coupe(*this, cle)};
  std::vector<std::string> valeurs;
  std::string tout = enregistrement(attribut);
  std::size_t debut = 0;
  while (true) {
    std::size_t fin = tout.find_first_of(std::string{VM, SM}, debut);
    std::string_view morceau = std::string_view(tout).substr(
        debut, fin == std::string::npos ? std::string::npos : fin - debut);
    valeurs.push_back(Coupe(*this, morceau));
    if (fin == std::string::npos) break;
    debut = fin + 1;
  }
  return valeurs;
}

std::string Item::Texte(const std::string& cle, const TabDyn& enregistrement) const {
  std::string joint;
  bool premier = true;
  for (const std::string& v : Valeurs(cle, enregistrement)) {
    if (!premier) joint += SM;
    joint += v;
    premier = false;
  }
  return joint;
}

std::string Item::PremiereValeur(const std::string& cle, const TabDyn& enregistrement) const {
  if (attribut == 0) return Coupe(*this, cle);
  return Coupe(*this, enregistrement(attribut, 1, 1));
}

}  // namespace marbrel::requete
