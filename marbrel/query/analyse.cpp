#include "marbrel/query/analyse.h"

#include <optional>

#include "marbrel/query/erreur_requete.h"
#include "marbrel/query/lexeme.h"
#include "marbrel/texte.h"

namespace marbrel::requete {

namespace {

using Sorte = Lexeme::Sorte;

class Analyseur {
 public:
  explicit Analyseur(std::string_view phrase) : phrase_(phrase), lexemes_(Decoupe(phrase)) {}

  Requete Phrase() {
    Requete q;
    const Lexeme& verbe = Courant();
    if (EstMot(verbe, "SSELECT")) {
      q.triee = true;
    } else if (!EstMot(verbe, "SELECT")) {
      Echec(verbe, "SSELECT ou SELECT attendu");
    }
    Avance();
    Fichier(q);
    Tris(q);
    if (EstAvec(Courant()) || Courant().sorte == Sorte::Ouvrante) {
      q.criteres = Disjonction();
      q.a_criteres = true;
    }
    Tris(q);
    if (Courant().sorte == Sorte::Fermante) {
      ErreurRequete(phrase_, Courant().position, "Parenthèse fermante sans parenthèse ouverte");
    }
    if (Courant().sorte != Sorte::Fin) {
      Echec(Courant(), "AVEC, PAR, AND, OR ou fin de phrase attendu");
    }
    return q;
  }

 private:
  const Lexeme& Courant() const { return lexemes_[i_]; }
  const Lexeme& Suivant() const { return lexemes_[i_ + 1 < lexemes_.size() ? i_ + 1 : i_]; }
  void Avance() {
    if (i_ + 1 < lexemes_.size()) ++i_;
  }

  [[noreturn]] void Echec(const Lexeme& l, const std::string& quoi) const {
    std::string vu = l.sorte == Sorte::Fin ? "" : " (lu : " + Montre(l) + ")";
    ErreurRequete(phrase_, l.position, quoi + vu);
  }

  static std::string Montre(const Lexeme& l) {
    if (l.sorte == Sorte::Litteral) return "\"" + l.texte + "\"";
    return "« " + l.texte + " »";
  }

  static bool EstMot(const Lexeme& l, std::string_view mot) {
    return l.sorte == Sorte::Mot && texte::UpperAscii(l.texte) == mot;
  }
  static bool EstAvec(const Lexeme& l) { return EstMot(l, "AVEC") || EstMot(l, "WITH"); }
  static bool EstPar(const Lexeme& l) { return EstMot(l, "PAR") || EstMot(l, "BY"); }
  static bool EstEt(const Lexeme& l) { return EstMot(l, "AND"); }
  static bool EstOu(const Lexeme& l) { return EstMot(l, "OR"); }

  // The operator the lexeme stands for, signs and words alike.
  static std::optional<Operateur> OperateurDe(const Lexeme& l) {
    std::string t = l.sorte == Sorte::Mot ? texte::UpperAscii(l.texte) : l.texte;
    if (l.sorte != Sorte::Operateur && l.sorte != Sorte::Mot) return std::nullopt;
    if (t == "=" || t == "EQ") return Operateur::Egal;
    if (t == "#" || t == "<>" || t == "NE") return Operateur::Different;
    if (t == "<" || t == "LT") return Operateur::Inferieur;
    if (t == ">" || t == "GT") return Operateur::Superieur;
    if (t == "<=" || t == "LE") return Operateur::InferieurEgal;
    if (t == ">=" || t == "GE") return Operateur::SuperieurEgal;
    return std::nullopt;
  }

  // A word that can name a file or a field: not a keyword of the sentence.
  static bool EstNom(const Lexeme& l) {
    if (l.sorte != Sorte::Mot) return false;
    if (EstAvec(l) || EstPar(l) || EstEt(l) || EstOu(l) || OperateurDe(l)) return false;
    return !EstMot(l, "SSELECT") && !EstMot(l, "SELECT");
  }

  void Fichier(Requete& q) {
    const Lexeme& l = Courant();
    q.position_fichier = l.position;
    if (EstMot(l, "DICT")) {
      Avance();
      if (!EstNom(Courant())) Echec(Courant(), "Nom de fichier attendu après DICT");
      q.fichier = "DICT " + Courant().texte;
    } else {
      if (!EstNom(l)) Echec(l, "Nom de fichier attendu");
      q.fichier = l.texte;
    }
    Avance();
  }

  void Tris(Requete& q) {
    while (EstPar(Courant())) {
      Avance();
      q.tri.push_back(Nom("Champ de tri attendu après PAR"));
    }
  }

  Champ Nom(const std::string& attendu) {
    const Lexeme& l = Courant();
    if (!EstNom(l)) Echec(l, attendu);
    Champ c{l.texte, l.position};
    Avance();
    return c;
  }

  // A connective that continues the clause: followed directly by an operator
  // or a literal.
  bool ContinueLaClause() const {
    const Lexeme& apres = Suivant();
    return apres.sorte == Sorte::Litteral || OperateurDe(apres).has_value();
  }

  Critere Disjonction() {
    Critere premier = Conjonction();
    if (!EstOu(Courant())) return premier;
    Critere ou;
    ou.sorte = Critere::Sorte::Ou;
    ou.enfants.push_back(std::move(premier));
    while (EstOu(Courant())) {
      Avance();
      ou.enfants.push_back(Conjonction());
    }
    return ou;
  }

  Critere Conjonction() {
    Critere premier = Primaire();
    if (!EstEt(Courant())) return premier;
    Critere et;
    et.sorte = Critere::Sorte::Et;
    et.enfants.push_back(std::move(premier));
    while (EstEt(Courant())) {
      Avance();
      et.enfants.push_back(Primaire());
    }
    return et;
  }

  // A group, or a clause; AVEC (or WITH) may stand before either, and once
  // one AVEC has been read a clause may name its field alone.
  Critere Primaire() {
    if (EstAvec(Courant())) {
      Avance();
      avec_lu_ = true;
      if (Courant().sorte == Sorte::Ouvrante) return Groupe();
      return Clause("Champ ou « ( » attendu après AVEC");
    }
    if (Courant().sorte == Sorte::Ouvrante) return Groupe();
    if (avec_lu_ && EstNom(Courant())) return Clause("Champ attendu");
    Echec(Courant(), "AVEC ou « ( » attendu");
  }

  Critere Groupe() {
    const std::size_t ouverte = Courant().position;
    Avance();
    if (Courant().sorte == Sorte::Fermante) {
      ErreurRequete(phrase_, ouverte,
                    "Groupe vide : une condition est attendue entre les parenthèses");
    }
    if (Courant().sorte == Sorte::Fin) {
      ErreurRequete(phrase_, ouverte, "Parenthèse ouverte sans parenthèse fermante");
    }
    Critere dedans = Disjonction();
    if (Courant().sorte != Sorte::Fermante) {
      if (Courant().sorte == Sorte::Fin) {
        ErreurRequete(phrase_, ouverte, "Parenthèse ouverte sans parenthèse fermante");
      }
      Echec(Courant(), "« ) » attendue");
    }
    Avance();
    return dedans;
  }

  Critere Clause(const std::string& attendu) {
    if (Courant().sorte == Sorte::Fermante) {
      ErreurRequete(phrase_, Courant().position, attendu + " avant « ) »");
    }
    Critere clause;
    clause.sorte = Critere::Sorte::Clause;
    clause.champ = Nom(attendu);
    const Lexeme& apres = Courant();
    if (apres.sorte == Sorte::Litteral || OperateurDe(apres)) {
      Operateur precedent = Operateur::Egal;
      clause.condition = Alternatives(precedent);
    } else {
      // A field alone: the field holds something.
      clause.condition.op = Operateur::Different;
    }
    return clause;
  }

  Condition Alternatives(Operateur& precedent) {
    Condition premiere = AlternativesEt(precedent);
    if (!(EstOu(Courant()) && ContinueLaClause())) return premiere;
    Condition ou;
    ou.sorte = Condition::Sorte::Ou;
    ou.enfants.push_back(std::move(premiere));
    while (EstOu(Courant()) && ContinueLaClause()) {
      Avance();
      ou.enfants.push_back(AlternativesEt(precedent));
    }
    return ou;
  }

  Condition AlternativesEt(Operateur& precedent) {
    Condition premiere = Comparaison(precedent);
    if (!(EstEt(Courant()) && ContinueLaClause())) return premiere;
    Condition et;
    et.sorte = Condition::Sorte::Et;
    et.enfants.push_back(std::move(premiere));
    while (EstEt(Courant()) && ContinueLaClause()) {
      Avance();
      et.enfants.push_back(Comparaison(precedent));
    }
    return et;
  }

  Condition Comparaison(Operateur& precedent) {
    Condition c;
    if (std::optional<Operateur> op = OperateurDe(Courant())) {
      precedent = *op;
      Avance();
    }
    c.op = precedent;
    if (Courant().sorte != Sorte::Litteral) {
      Echec(Courant(), "Valeur entre guillemets attendue");
    }
    c.litteral = Courant().texte;
    Avance();
    return c;
  }

  std::string_view phrase_;
  std::vector<Lexeme> lexemes_;
  std::size_t i_ = 0;
  bool avec_lu_ = false;  // an AVEC has come: a field may open a clause alone
};

}  // namespace

Requete Analyse(std::string_view phrase) { return Analyseur(phrase).Phrase(); }

}  // namespace marbrel::requete
