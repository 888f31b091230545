#include "marbrel/query/erreur_requete.h"
#include "marbrel/query/lexeme.h"

namespace marbrel::requete {

namespace {

bool EstBlanc(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Characters that end a word: blanks, quotes, parentheses and operator signs.
bool FinDeMot(char c) {
  return EstBlanc(c) || c == '"' || c == '\'' || c == '(' || c == ')' || c == '=' || c == '#' ||
         c == '<' || c == '>';
}

}  // namespace

std::vector<Lexeme> Decoupe(std::string_view phrase) {
  std::vector<Lexeme> lexemes;
  std::size_t i = 0;
  while (i < phrase.size()) {
    char c = phrase[i];
    if (EstBlanc(c)) {
      ++i;
      continue;
    }
    Lexeme l;
    l.position = i;
    if (c == '"' || c == '\'') {
      std::size_t fin = phrase.find(c, i + 1);
      if (fin == std::string_view::npos) {
        ErreurRequete(phrase, i, "Valeur sans guillemet de fin");
      }
      l.sorte = Lexeme::Sorte::Litteral;
      l.texte = std::string(phrase.substr(i + 1, fin - i - 1));
      i = fin + 1;
    } else if (c == '(' || c == ')') {
      l.sorte = c == '(' ? Lexeme::Sorte::Ouvrante : Lexeme::Sorte::Fermante;
      l.texte = std::string(1, c);
      ++i;
    } else if (c == '=' || c == '#') {
      l.sorte = Lexeme::Sorte::Operateur;
      l.texte = std::string(1, c);
      ++i;
    } else if (c == '<' || c == '>') {
      l.sorte = Lexeme::Sorte::Operateur;
      std::size_t n = 1;
      if (i + 1 < phrase.size() && (phrase[i + 1] == '=' || (c == '<' && phrase[i + 1] == '>'))) {
        n = 2;
      }
      l.texte = std::string(phrase.substr(i, n));
      i += n;
    } else {
      std::size_t fin = i;
      while (fin < phrase.size() && !FinDeMot(phrase[fin])) ++fin;
      l.sorte = Lexeme::Sorte::Mot;
      l.texte = std::string(phrase.substr(i, fin - i));
      i = fin;
    }
    lexemes.push_back(std::move(l));
  }
  Lexeme fin;
  fin.sorte = Lexeme::Sorte::Fin;
  fin.position = phrase.size();
  lexemes.push_back(fin);
  return lexemes;
}

}  // namespace marbrel::requete
