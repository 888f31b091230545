// Errors raised by the data library. Each carries the library's error number,
// so that callers can test for one case (the absent key) and let others pass.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace marbrel {

// Numbers of the library's errors. The absent key keeps the number that hosts
// of the library have always tested for.
inline constexpr std::int32_t ERR_CLE_ABSENTE = -2147221493;  // 0x8004000B
inline constexpr std::int32_t ERR_FICHIER_INCONNU = -2147221492;
inline constexpr std::int32_t ERR_REQUETE = -2147221491;      // query syntax or meaning
inline constexpr std::int32_t ERR_BASE = -2147221490;         // the store itself failed
inline constexpr std::int32_t ERR_IMPORT = -2147221489;       // a dump that cannot be loaded
inline constexpr std::int32_t ERR_LECTURE_SEULE = -2147221488;
inline constexpr std::int32_t ERR_CODE_PERSONNE = -2147221487;  // a code no selection can isolate

// A failure of the library: a number to test and a French message for people.
class Erreur : public std::runtime_error {
 public:
  Erreur(std::int32_t numero, const std::string& message)
      : std::runtime_error(message), numero_(numero) {}
  std::int32_t Numero() const { return numero_; }

 private:
  std::int32_t numero_;
};

}  // namespace marbrel
