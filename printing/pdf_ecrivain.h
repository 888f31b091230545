// The file structure of a PDF: numbered objects written one after the other
// with their offsets, streams deflated through one reused zlib stream, the
// cross-reference table and the trailer at the end. It knows nothing of
// pages or fonts.
//
// Every write is checked: the first failure (a full disk, a closed pipe)
// becomes a French exception naming the destination, and later writes are
// refused with the same message, so that a short file never passes for a
// whole one.
#pragma once

#include <zlib.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace printing::pdf {

// Deflate (zlib format) with one z_stream for the life of the object: a
// document compresses thousands of page contents, and setting up zlib's
// tables each time would cost more than compressing a page.
class Compresseur {
 public:
  explicit Compresseur(int niveau);
  ~Compresseur();
  Compresseur(const Compresseur&) = delete;
  Compresseur& operator=(const Compresseur&) = delete;

  // The compressed form of donnees, replacing sortie's content.
  void Compresse(const std::string& donnees, std::string& sortie);

 private:
  z_stream z_{};
};

class EcrivainPdf {
 public:
  // Writes to flux, which must outlive the writer; destination names it in
  // messages. The header is written at once.
  EcrivainPdf(std::ostream& flux, std::string destination);

  // A new object number, to be written later with Objet or Flux.
  int Reserve();
  // Writes object numero with the given body (a dictionary, an array…).
  void Objet(int numero, const std::string& corps);
  // Writes object numero as a stream: dictionnaire holds the entries other
  // than /Length and /Filter, without the angle brackets. Compressed with
  // Flate when compresse.
  void Flux(int numero, const std::string& dictionnaire, const std::string& donnees,
            bool compresse = true);
  // The cross-reference table and the trailer naming the catalogue, the
  // information dictionary and the document's identifier (16 bytes); then
  // everything is flushed. Fails when an object reserved was never written.
  void Termine(int catalogue, int info, const std::string& identifiant);

  // Throws the failure of an earlier write again, if there was one.
  void Verifie() const {
    if (!echec_.empty()) throw std::runtime_error(echec_);
  }

  // Bytes written so far.
  std::size_t Taille() const { return ecrits_ + tampon_.size(); }

 private:
  void Ecrit(const std::string& s);
  void Vide();
  void Echec(const std::string& raison);

  std::ostream& flux_;
  std::string destination_;
  std::string tampon_;
  std::size_t ecrits_ = 0;
  std::vector<std::size_t> positions_{0};  // offset of each object; [0] unused
  Compresseur compresseur_;
  std::string compresse_;
  std::string echec_;
};

}  // namespace printing::pdf
