#include "printing/pdf_surface.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

#include "printing/pdf_document.h"
#include "printing/pdf_ecrivain.h"
#include "printing/raison_systeme.h"

namespace printing {

PdfSurface::PdfSurface(std::ostream& flux, std::string destination, pdf::Metadonnees metadonnees)
    : flux_(&flux), destination_(std::move(destination)), metadonnees_(std::move(metadonnees)) {}

PdfSurface::PdfSurface(std::string chemin, pdf::Metadonnees metadonnees, std::string nom)
    : flux_(nullptr),
      destination_(nom.empty() ? chemin : std::move(nom)),
      chemin_(std::move(chemin)),
      metadonnees_(std::move(metadonnees)) {}

PdfSurface::~PdfSurface() {
  // An unfinished document is ended, so that what was drawn is not lost (as
  // Qt's surface does); a failure then has nobody left to tell.
  try {
    FinDocument();
  } catch (const std::exception&) {
  }
}

void PdfSurface::DebutDocument(const Papier& papier) {
  document_.reset();
  std::ostream* flux = flux_;
  if (chemin_.empty()) {
    // A second document after the first would make the stream two PDFs in one.
    if (flux_utilise_) {
      throw std::runtime_error("le flux PDF « " + destination_ +
                               " » a déjà reçu un document : un seul document par flux.");
    }
    flux_utilise_ = true;
  } else {
    if (fichier_.is_open()) fichier_.close();
    errno = 0;
    fichier_.clear();
    fichier_.open(chemin_, std::ios::binary | std::ios::trunc);
    if (!fichier_) {
      throw std::runtime_error("le fichier PDF « " + destination_ +
                               " » ne peut pas être écrit : " + RaisonSysteme(errno) + ".");
    }
    flux = &fichier_;
  }
  document_ = std::make_unique<pdf::Document>(*flux, destination_, papier, metadonnees_);
}

void PdfSurface::NouvellePage() {
  if (document_) document_->NouvellePage();
}

void PdfSurface::Texte(double x, double y, const Police& police, const std::string& texte) {
  if (document_) document_->Texte(x, y, police, texte);
}

void PdfSurface::Trait(double x1, double y1, double x2, double y2, int largeur) {
  if (document_) document_->Trait(x1, y1, x2, y2, largeur);
}

void PdfSurface::FinDocument() {
  if (!document_) return;
  // The document is over whatever happens; a failure is thrown after.
  const std::unique_ptr<pdf::Document> document = std::move(document_);
  document->Termine();
  if (!chemin_.empty()) {
    errno = 0;
    fichier_.close();
    if (!fichier_) {
      throw std::runtime_error("l'écriture du PDF « " + destination_ +
                               " » a échoué : " + RaisonSysteme(errno) + ".");
    }
  }
}

std::unique_ptr<Surface> SurfacePdf(const std::string& chemin, const Travail& travail,
                                    const std::string& nom) {
  namespace fs = std::filesystem;
  std::error_code e;
  const fs::path fichier = fs::absolute(chemin, e);
  const fs::path dossier = fichier.parent_path();
  if (fs::is_directory(fichier, e)) {
    throw std::runtime_error("le fichier PDF « " + chemin + " » est un dossier.");
  }
  if (!fs::is_directory(dossier, e)) {
    throw std::runtime_error("le dossier du fichier PDF « " + chemin + " » n'existe pas.");
  }
  const bool existe = fs::exists(fichier, e);
  if (access((existe ? fichier : dossier).c_str(), W_OK) != 0) {
    throw std::runtime_error("le fichier PDF « " + chemin + " » ne peut pas être écrit.");
  }
  pdf::Metadonnees m;
  m.titre = travail.titre;
  m.sujet = travail.sujet;
  m.auteur = pdf::AuteurDesDocuments();
  m.date = pdf::DateDuDocument();
  return std::make_unique<PdfSurface>(chemin, std::move(m), nom);
}

}  // namespace printing
