// The text and JSON forms of a recording (print_formats.h) written as the
// print goes: each page is written when the next one begins, so that memory
// holds one page whatever the size of the batch. The output is byte for byte
// what EnTexte or EnJson gives for the whole recording.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "printing/recording.h"
#include "printing/surface.h"

namespace printing {

class SortieFormat {
 public:
  enum class Format { Texte, Json };

  // Writes to flux, which must outlive this object; destination names it in
  // messages.
  SortieFormat(std::ostream& flux, Format format, std::string destination);

  // A surface drawing into this output; the documents of several surfaces
  // in a row follow one another, as in one recording. It must not outlive
  // this object.
  std::unique_ptr<Surface> NouvelleSurface();

  // Ends the output (the end of the JSON, or its empty form when nothing was
  // printed) and flushes it. A failed write, here or while the pages were
  // written, throws a French message naming the destination.
  void Termine();

  long Pages() const { return pages_; }

 private:
  friend class SurfaceSortie;
  void Ecrit(const PageEnregistree& page);
  void Vide();

  std::ostream& flux_;
  Format format_;
  std::string destination_;
  std::string tampon_;
  long pages_ = 0;
  std::string echec_;
};

}  // namespace printing
