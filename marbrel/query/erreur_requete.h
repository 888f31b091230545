// The errors of a sentence: every one names what is wrong, quotes the sentence
// and gives the character position (from 1) where it was found, so that a user
// can find the mistake in a long sentence built by a program.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace marbrel::requete {

// Throws Erreur(ERR_REQUETE): "<quoi> à la position N de la phrase « ... »."
// octet is a byte offset into phrase; at or past its end the message says
// "à la fin de la phrase".
[[noreturn]] void ErreurRequete(std::string_view phrase, std::size_t octet,
                                const std::string& quoi);

}  // namespace marbrel::requete
