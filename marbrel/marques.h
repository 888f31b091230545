// The record format of the multivalue store: one home for the three marks.
//
// A record is UTF-8 text cut into attributes by AM, an attribute into values by
// VM, a value into sub-values by SM. The three bytes never occur in valid UTF-8,
// so no text a user types can ever be mistaken for a mark.
#pragma once

namespace marbrel {

inline constexpr char AM = '\xFE';  // attribute mark
inline constexpr char VM = '\xFD';  // value mark
inline constexpr char SM = '\xFC';  // sub-value mark

}  // namespace marbrel
