// The lexemes of a sentence (see requete.h for the grammar).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace marbrel::requete {

struct Lexeme {
  enum class Sorte {
    Mot,        // a keyword, a name or a number: any run of other characters
    Litteral,   // a quoted value; texte holds it without the quotes
    Operateur,  // = # <> < > <= >=
    Ouvrante,   // (
    Fermante,   // )
    Fin,        // after the last lexeme; position = size of the sentence
  };
  Sorte sorte = Sorte::Fin;
  std::string texte;
  std::size_t position = 0;  // byte offset in the sentence
};

// Cuts the sentence into lexemes, ending with one Fin. A quote left open fails
// with ERR_REQUETE pointing at the opening quote.
std::vector<Lexeme> Decoupe(std::string_view phrase);

}  // namespace marbrel::requete
