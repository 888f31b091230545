// Why a write or an opening failed, in French, for a system error number.
#pragma once

#include <string>

namespace printing {

// The French reason of a system error number ("le disque est plein", ...);
// 0 (a stream that failed without saying why) is an interrupted write.
std::string RaisonSysteme(int numero);

}  // namespace printing
