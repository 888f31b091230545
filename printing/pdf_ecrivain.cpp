#include "printing/pdf_ecrivain.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "printing/raison_systeme.h"

namespace printing::pdf {

namespace {

// Written in blocks: one write per page would cost a system call each.
constexpr std::size_t kTailleTampon = 256 * 1024;

}  // namespace

Compresseur::Compresseur(int niveau) {
  if (deflateInit(&z_, niveau) != Z_OK) {
    throw std::runtime_error("mémoire insuffisante pour compresser le PDF.");
  }
}

Compresseur::~Compresseur() { deflateEnd(&z_); }

void Compresseur::Compresse(const std::string& donnees, std::string& sortie) {
  deflateReset(&z_);
  sortie.resize(deflateBound(&z_, static_cast<uLong>(donnees.size())));
  z_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(donnees.data()));
  z_.avail_in = static_cast<uInt>(donnees.size());
  z_.next_out = reinterpret_cast<Bytef*>(sortie.data());
  z_.avail_out = static_cast<uInt>(sortie.size());
  if (deflate(&z_, Z_FINISH) != Z_STREAM_END) {
    throw std::runtime_error("la compression d'un flux du PDF a échoué.");
  }
  sortie.resize(sortie.size() - z_.avail_out);
}

EcrivainPdf::EcrivainPdf(std::ostream& flux, std::string destination)
    : flux_(flux), destination_(std::move(destination)), compresseur_(Z_DEFAULT_COMPRESSION) {
  tampon_.reserve(kTailleTampon + 64 * 1024);
  // The comment of four bytes above 127 tells transfer programs the file is binary.
  Ecrit("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

void EcrivainPdf::Echec(const std::string& raison) {
  if (echec_.empty()) {
    echec_ = "l'écriture du PDF « " + destination_ + " » a échoué : " + raison + ".";
  }
  throw std::runtime_error(echec_);
}

void EcrivainPdf::Vide() {
  if (!echec_.empty()) throw std::runtime_error(echec_);
  if (tampon_.empty()) return;
  errno = 0;
  flux_.write(tampon_.data(), static_cast<std::streamsize>(tampon_.size()));
  if (!flux_) Echec(RaisonSysteme(errno));
  ecrits_ += tampon_.size();
  tampon_.clear();
}

void EcrivainPdf::Ecrit(const std::string& s) {
  if (!echec_.empty()) throw std::runtime_error(echec_);
  tampon_ += s;
  if (tampon_.size() >= kTailleTampon) Vide();
}

int EcrivainPdf::Reserve() {
  positions_.push_back(0);
  return static_cast<int>(positions_.size() - 1);
}

void EcrivainPdf::Objet(int numero, const std::string& corps) {
  positions_.at(static_cast<std::size_t>(numero)) = Taille();
  Ecrit(std::to_string(numero) + " 0 obj\n");
  Ecrit(corps);
  Ecrit("\nendobj\n");
}

void EcrivainPdf::Flux(int numero, const std::string& dictionnaire, const std::string& donnees,
                       bool compresse) {
  const std::string* contenu = &donnees;
  std::string entete = std::to_string(numero) + " 0 obj\n<<" + dictionnaire;
  if (compresse) {
    compresseur_.Compresse(donnees, compresse_);
    contenu = &compresse_;
    entete += "/Filter/FlateDecode";
  }
  entete += "/Length " + std::to_string(contenu->size()) + ">>stream\n";
  positions_.at(static_cast<std::size_t>(numero)) = Taille();
  Ecrit(entete);
  Ecrit(*contenu);
  Ecrit("\nendstream\nendobj\n");
}

void EcrivainPdf::Termine(int catalogue, int info, const std::string& identifiant) {
  for (std::size_t i = 1; i < positions_.size(); ++i) {
    if (positions_[i] == 0) {
      throw std::logic_error("objet PDF " + std::to_string(i) + " réservé mais jamais écrit");
    }
  }
  const std::size_t debut_xref = Taille();
  std::string xref = "xref\n0 " + std::to_string(positions_.size()) + "\n0000000000 65535 f \n";
  char entree[32];
  for (std::size_t i = 1; i < positions_.size(); ++i) {
    std::snprintf(entree, sizeof entree, "%010zu 00000 n \n", positions_[i]);
    xref += entree;
    if (xref.size() >= kTailleTampon) {
      Ecrit(xref);
      xref.clear();
    }
  }
  std::string id;
  for (unsigned char c : identifiant) {
    char hex[3];
    std::snprintf(hex, sizeof hex, "%02x", c);
    id += hex;
  }
  xref += "trailer\n<</Size " + std::to_string(positions_.size()) + "/Root " +
          std::to_string(catalogue) + " 0 R/Info " + std::to_string(info) + " 0 R/ID[<" + id +
          "><" + id + ">]>>\nstartxref\n" + std::to_string(debut_xref) + "\n%%EOF\n";
  Ecrit(xref);
  Vide();
  errno = 0;
  flux_.flush();
  if (!flux_) Echec(RaisonSysteme(errno));
}

}  // namespace printing::pdf
