// The query language of Base::Selectionne: its grammar and the tree the parser
// builds. This is the one home of the grammar; the lexer, the parser, the
// evaluator and the planner all follow it.
//
//   sentence   := verb file { sort } [ criteria ] { sort }
//   verb       := SSELECT | SELECT
//   file       := NAME | DICT NAME
//   sort       := (PAR | BY) field
//   criteria   := conj { OR conj }                  AND binds tighter than OR
//   conj       := primary { AND primary }
//   primary    := [ AVEC | WITH ] ( "(" criteria ")" | clause )
//   clause     := field [ alts ]                    no comparison: field # ""
//                                                   a field with no AVEC before
//                                                   it only after a first AVEC
//   alts       := alt_conj { OR alt_conj }          same precedence inside
//   alt_conj   := alt { AND alt }
//   alt        := operator literal | literal        a bare literal repeats the
//                                                   previous operator (= first)
//   operator   := = | # | <> | < | > | <= | >= | EQ | NE | LT | GT | LE | GE
//   literal    := "text" | 'text'
//   field      := digits (that attribute, 0 = the key) | dictionary item name
//
// A connective (AND, OR) followed directly by an operator or a literal continues
// the clause before it, on the same field: AVEC 1 >= "21500" OR = "" is one
// clause, true when attribute 1 is at least 21500 or empty. A connective
// followed by AVEC, "(" or a field joins two criteria: AVEC (1 = "1" OR
// 2 = "1") AND 3 = "1", as multivalue users write it, is the same as
// (AVEC 1 = "1" OR AVEC 2 = "1") AND AVEC 3 = "1".
//
// Keywords and operator words are recognised in any letter case; file and
// dictionary names are taken verbatim.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace marbrel::requete {

enum class Operateur { Egal, Different, Inferieur, Superieur, InferieurEgal, SuperieurEgal };

// The comparisons of one clause, on the clause's field.
struct Condition {
  enum class Sorte { Comparaison, Et, Ou };
  Sorte sorte = Sorte::Comparaison;
  Operateur op = Operateur::Egal;  // Comparaison only
  std::string litteral;            // Comparaison only, without its quotes
  std::vector<Condition> enfants;  // Et, Ou
};

// A field as written in the sentence; position is its byte offset there, kept
// so that an unknown field can be pointed at.
struct Champ {
  std::string nom;
  std::size_t position = 0;
};

// The criteria: clauses joined by AND and OR.
struct Critere {
  enum class Sorte { Clause, Et, Ou };
  Sorte sorte = Sorte::Clause;
  Champ champ;                   // Clause only
  Condition condition;           // Clause only
  std::vector<Critere> enfants;  // Et, Ou
};

struct Requete {
  bool triee = false;  // SSELECT
  std::string fichier;
  std::size_t position_fichier = 0;
  bool a_criteres = false;
  Critere criteres;
  std::vector<Champ> tri;  // PAR fields, in order
};

}  // namespace marbrel::requete
