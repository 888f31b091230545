#include "printing/geometrie.h"

namespace printing {

Papier PapierDeCode(std::int16_t code) {
  switch (code) {
    case 8:
      return {8, "A3", 297.0, 420.0};
    case 1:
      return {1, "Letter", 215.9, 279.4};
    case 5:
      return {5, "Legal", 215.9, 355.6};
    case 11:
      return {11, "A5", 148.0, 210.0};
    default:
      return {9, "A4", 210.0, 297.0};
  }
}

}  // namespace printing
