#include "control/interface.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace interface_vesko {

namespace {

Membre P(int slot, const char* nom, std::vector<Parametre> params = {}) {
  return {slot, nom, Genre::Procedure, std::move(params)};
}
const Parametre kCode{"W_Code", "Texte"};

}  // namespace

const std::vector<Membre>& Membres() {
  static const std::vector<Membre> membres = {
      {1, "TheClient", Genre::Propriete, {{"Client", "Client"}}},
      {2, "TheDatabase", Genre::Propriete, {{"Base", "Base"}}},
      P(3, "Edition", {{"W_TabDyn", "TabDyn"}, {"W_Type", "Texte"}}),
      P(4, "Parametrage_Imprimante"),
      P(5, "Prepare_Impression", {{"W_TabDyn", "TabDyn"}}),
      P(6, "Entete_Page", {kCode}),
      P(7, "Etat_Civil"),
      P(8, "NewPage", {kCode}),
      P(9, "Conjoint_Aide"),
      P(10, "Autres_Personnes_Foyer"),
      P(11, "Ressource_Aide", {kCode}),
      P(12, "Origine_Dossier", {kCode}),
      P(13, "Origine_Contact", {{"W_Att", "Entier32"}, {"W_Lib", "Texte"}}),
      P(14, "Adresse_Facturation", {kCode}),
      P(15, "Adresse_Bancaire", {kCode}),
      P(16, "Sectorisation"),
      P(17, "Modalite_Interv", {kCode}),
      P(18, "Formation", {kCode}),
      P(19, "Experience"),
      P(20, "Activite"),
      P(21, "Capacite_Tache", {kCode}),
      P(22, "Comportement"),
      P(23, "Aidant_Incompatible", {kCode}),
      P(24, "Dispo", {kCode}),
      P(25, "Habitat", {kCode}),
      P(26, "Enfant_Hors_Foyer"),
      P(27, "Personne_A_Prevenir", {kCode}),
      P(28, "Contact"),
      P(29, "Intervenants_Exterieurs"),
      P(30, "Medecin_Traitant"),
      P(31, "Intervenant"),
      P(32, "Aide_Technique"),
      P(33, "Antecedent", {kCode}),
      P(34, "Diagnostic"),
      P(35, "Trait_Med"),
      P(36, "Fiche_Med", {{"W_Att", "Entier32"}}),
      P(37, "Handicap"),
      P(38, "Detail_Etranger", {kCode}),
      P(39, "Bloc_Note_Aidant", {kCode}),
      P(40, "Bloc_Note_Aide", {kCode}),
      P(41, "Bloc_Note", {{"W_Bloc", "TabDyn"}, kCode}),
      P(42, "Titre", {{"Libelle", "Texte"}}),
      P(43, "Cadre",
        {{"W_PointDepart", "Monnaie"}, {"W_Nbligne", "Entier32"}, {"W_TailleCol", "TabDyn"}}),
      P(44, "ImprimeDonnées", {kCode}),
      P(45, "Remplir_Liste_Tache"),
      // Added after the historic members: their slots do not move.
      {46, "Utilisateur", Genre::Propriete, {{"W_Utilisateur", "Texte"}}},
  };
  return membres;
}

const std::vector<Membre>& MembresPrives() {
  static const std::vector<Membre> prives = {P(0, "Indispo", {kCode}),
                                             P(0, "Position_Coupure", {{"Texte", "Texte"}})};
  return prives;
}

const Membre* Cherche(const std::string& nom) {
  for (const Membre& m : Membres()) {
    if (m.nom == nom) return &m;
  }
  return nullptr;
}

namespace {

template <typename T>
T& Arg(const Membre& m, std::vector<Argument>& args, size_t i) {
  if (T* v = std::get_if<T>(&args[i])) return *v;
  throw std::invalid_argument("Le paramètre " + m.parametres[i].nom + " de " + m.nom +
                              " doit être de type " + m.parametres[i].type + ".");
}

using Appel = std::function<void(Ctr_Vesko&, const Membre&, std::vector<Argument>&)>;

// Members without parameter, and members taking only the person's code.
template <void (Ctr_Vesko::*F)()>
Appel SansArgument() {
  return [](Ctr_Vesko& c, const Membre&, std::vector<Argument>&) { (c.*F)(); };
}
template <void (Ctr_Vesko::*F)(std::string&)>
Appel AvecCode() {
  return [](Ctr_Vesko& c, const Membre& m, std::vector<Argument>& a) {
    (c.*F)(Arg<std::string>(m, a, 0));
  };
}

const std::map<std::string, Appel>& Appels() {
  using C = Ctr_Vesko;
  static const std::map<std::string, Appel> appels = {
      {"TheClient", [](C& c, const Membre& m,
                       auto& a) { c.TheClient(Arg<std::shared_ptr<marbrel::Client>>(m, a, 0)); }},
      {"TheDatabase", [](C& c, const Membre& m,
                         auto& a) { c.TheDatabase(Arg<std::shared_ptr<marbrel::Base>>(m, a, 0)); }},
      {"Edition", [](C& c, const Membre& m,
                     auto& a) { c.Edition(Arg<TabDyn>(m, a, 0), Arg<std::string>(m, a, 1)); }},
      {"Parametrage_Imprimante", SansArgument<&C::Parametrage_Imprimante>()},
      {"Prepare_Impression",
       [](C& c, const Membre& m, auto& a) { c.Prepare_Impression(Arg<TabDyn>(m, a, 0)); }},
      {"Entete_Page", AvecCode<&C::Entete_Page>()},
      {"Etat_Civil", SansArgument<&C::Etat_Civil>()},
      {"NewPage", AvecCode<&C::NewPage>()},
      {"Conjoint_Aide", SansArgument<&C::Conjoint_Aide>()},
      {"Autres_Personnes_Foyer", SansArgument<&C::Autres_Personnes_Foyer>()},
      {"Ressource_Aide", AvecCode<&C::Ressource_Aide>()},
      {"Origine_Dossier", AvecCode<&C::Origine_Dossier>()},
      {"Origine_Contact",
       [](C& c, const Membre& m, auto& a) {
         c.Origine_Contact(Arg<std::int32_t>(m, a, 0), Arg<std::string>(m, a, 1));
       }},
      {"Adresse_Facturation", AvecCode<&C::Adresse_Facturation>()},
      {"Adresse_Bancaire", AvecCode<&C::Adresse_Bancaire>()},
      {"Sectorisation", SansArgument<&C::Sectorisation>()},
      {"Modalite_Interv", AvecCode<&C::Modalite_Interv>()},
      {"Formation", AvecCode<&C::Formation>()},
      {"Experience", SansArgument<&C::Experience>()},
      {"Activite", SansArgument<&C::Activite>()},
      {"Capacite_Tache", AvecCode<&C::Capacite_Tache>()},
      {"Comportement", SansArgument<&C::Comportement>()},
      {"Aidant_Incompatible", AvecCode<&C::Aidant_Incompatible>()},
      {"Dispo", AvecCode<&C::Dispo>()},
      {"Habitat", AvecCode<&C::Habitat>()},
      {"Enfant_Hors_Foyer", SansArgument<&C::Enfant_Hors_Foyer>()},
      {"Personne_A_Prevenir", AvecCode<&C::Personne_A_Prevenir>()},
      {"Contact", SansArgument<&C::Contact>()},
      {"Intervenants_Exterieurs", SansArgument<&C::Intervenants_Exterieurs>()},
      {"Medecin_Traitant", SansArgument<&C::Medecin_Traitant>()},
      {"Intervenant", SansArgument<&C::Intervenant>()},
      {"Aide_Technique", SansArgument<&C::Aide_Technique>()},
      {"Antecedent", AvecCode<&C::Antecedent>()},
      {"Diagnostic", SansArgument<&C::Diagnostic>()},
      {"Trait_Med", SansArgument<&C::Trait_Med>()},
      {"Fiche_Med",
       [](C& c, const Membre& m, auto& a) { c.Fiche_Med(Arg<std::int32_t>(m, a, 0)); }},
      {"Handicap", SansArgument<&C::Handicap>()},
      {"Detail_Etranger", AvecCode<&C::Detail_Etranger>()},
      {"Bloc_Note_Aidant", AvecCode<&C::Bloc_Note_Aidant>()},
      {"Bloc_Note_Aide", AvecCode<&C::Bloc_Note_Aide>()},
      {"Bloc_Note", [](C& c, const Membre& m,
                       auto& a) { c.Bloc_Note(Arg<TabDyn>(m, a, 0), Arg<std::string>(m, a, 1)); }},
      {"Titre", [](C& c, const Membre& m, auto& a) { c.Titre(Arg<std::string>(m, a, 0)); }},
      {"Cadre",
       [](C& c, const Membre& m, auto& a) {
         c.Cadre(Arg<Monnaie>(m, a, 0), Arg<std::int32_t>(m, a, 1), Arg<TabDyn>(m, a, 2));
       }},
      {"ImprimeDonnées", AvecCode<&C::ImprimeDonnées>()},
      {"Remplir_Liste_Tache", SansArgument<&C::Remplir_Liste_Tache>()},
      {"Utilisateur",
       [](C& c, const Membre& m, auto& a) { c.Utilisateur(Arg<std::string>(m, a, 0)); }},
  };
  return appels;
}

}  // namespace

void Appelle(Ctr_Vesko& controle, const std::string& nom, std::vector<Argument>& arguments) {
  const Membre* m = Cherche(nom);
  if (!m) throw std::invalid_argument("Le contrôle n'a pas de membre public « " + nom + " ».");
  if (arguments.size() != m->parametres.size()) {
    throw std::invalid_argument(m->nom + " attend " + std::to_string(m->parametres.size()) +
                                " paramètre(s), " + std::to_string(arguments.size()) + " reçu(s).");
  }
  Appels().at(m->nom)(controle, *m, arguments);
}

}  // namespace interface_vesko
