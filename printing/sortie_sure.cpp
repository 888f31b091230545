#include "printing/sortie_sure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "printing/pdf_surface.h"
#include "printing/provisoires.h"
#include "printing/raison_systeme.h"

namespace printing {

namespace fs = std::filesystem;

namespace {

// Writes all of contenu to fd; the error number of a failed write, or 0.
int EcritTout(int fd, const std::string& contenu) {
  std::size_t fait = 0;
  while (fait < contenu.size()) {
    const ssize_t n = write(fd, contenu.data() + fait, contenu.size() - fait);
    if (n < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    fait += static_cast<std::size_t>(n);
  }
  return 0;
}

// A full disk is the usual cause of a short file; say so when it is the case.
std::string SiDisquePlein(const std::string& chemin) {
  struct statvfs disque {};
  if (statvfs(chemin.c_str(), &disque) == 0 && disque.f_bavail == 0) {
    return " : le disque est plein";
  }
  return "";
}

}  // namespace

FichierProvisoire::FichierProvisoire(std::string cible, std::string quoi)
    : cible_(std::move(cible)), quoi_(std::move(quoi)) {
  const fs::path chemin_cible(cible_);
  struct stat etat {};
  if (stat(cible_.c_str(), &etat) == 0) {
    if (S_ISDIR(etat.st_mode)) {
      throw std::runtime_error("le " + quoi_ + " « " + cible_ + " » est un dossier.");
    }
    if (!S_ISREG(etat.st_mode)) {
      throw std::runtime_error("le " + quoi_ + " « " + cible_ +
                               " » n'est pas un fichier ordinaire (périphérique ou tube) : il ne "
                               "peut pas recevoir le document.");
    }
  }
  fs::path dossier = chemin_cible.parent_path();
  if (dossier.empty()) dossier = ".";
  std::error_code erreur;
  if (!fs::is_directory(dossier, erreur)) {
    throw std::runtime_error("le dossier du " + quoi_ + " « " + cible_ + " » n'existe pas.");
  }
  // Hidden, and beside the target: the rename stays on one disk.
  std::string modele =
      (dossier / ("." + chemin_cible.filename().string() + ".vesko-XXXXXX")).string();
  chemin_ = CreeProvisoire(modele, 0);
  if (chemin_.empty()) {
    throw std::runtime_error("le " + quoi_ + " « " + cible_ +
                             " » ne peut pas être écrit : " + RaisonSysteme(errno) + ".");
  }
}

FichierProvisoire::~FichierProvisoire() {
  if (remplace_) return;
  OublieProvisoire(chemin_);
  unlink(chemin_.c_str());
}

void FichierProvisoire::Ecrit(const std::string& contenu) {
  const int fd = open(chemin_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  int erreur = fd < 0 ? errno : EcritTout(fd, contenu);
  if (fd >= 0 && close(fd) != 0 && erreur == 0) erreur = errno;
  if (erreur != 0) {
    throw std::runtime_error("le " + quoi_ + " « " + cible_ + " » n'a pas pu être écrit : " +
                             RaisonSysteme(erreur) + " ; le fichier précédent est gardé.");
  }
}

void FichierProvisoire::Remplace() {
  const int fd = open(chemin_.c_str(), O_RDONLY | O_CLOEXEC);
  int erreur = fd < 0 ? errno : (fsync(fd) == 0 ? 0 : errno);
  if (fd >= 0) close(fd);
  if (erreur == 0 && rename(chemin_.c_str(), cible_.c_str()) != 0) erreur = errno;
  if (erreur != 0) {
    throw std::runtime_error("le " + quoi_ + " « " + cible_ + " » n'a pas pu être mis en place : " +
                             RaisonSysteme(erreur) + " ; le fichier précédent est gardé.");
  }
  remplace_ = true;
  OublieProvisoire(chemin_);
  // The new name itself reaches the disk with its folder.
  fs::path dossier = fs::path(cible_).parent_path();
  if (dossier.empty()) dossier = ".";
  const int d = open(dossier.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (d >= 0) {
    fsync(d);
    close(d);
  }
}

void VerifiePdf(const std::string& chemin, const std::string& cible) {
  std::ifstream f(chemin, std::ios::binary | std::ios::ate);
  const std::streamoff taille = f ? static_cast<std::streamoff>(f.tellg()) : -1;
  auto incomplet = [&](const std::string& pourquoi) {
    return std::runtime_error("le document destiné à « " + cible + " » est incomplet (" + pourquoi +
                              ")" + SiDisquePlein(chemin) + " ; il n'a pas été utilisé.");
  };
  if (taille <= 0) throw incomplet("fichier vide");
  std::string debut(5, '\0');
  f.seekg(0);
  f.read(debut.data(), 5);
  if (debut != "%PDF-") throw incomplet("ce n'est pas un PDF");
  const std::streamoff fin = std::min<std::streamoff>(taille, 1024);
  std::string queue(static_cast<std::size_t>(fin), '\0');
  f.seekg(taille - fin);
  f.read(queue.data(), fin);
  const std::size_t eof = queue.rfind("%%EOF");
  if (!f || eof == std::string::npos ||
      queue.find_first_not_of("\r\n \t", eof + 5) != std::string::npos) {
    throw incomplet("sa fin « %%EOF » manque");
  }
}

void EcritFichierSur(const std::string& chemin, const std::string& contenu,
                     const std::string& quoi) {
  FichierProvisoire provisoire(chemin, quoi);
  provisoire.Ecrit(contenu);
  provisoire.Remplace();
}

void CopieFichierSur(const std::string& source, const std::string& cible, const std::string& quoi) {
  std::ifstream f(source, std::ios::binary);
  if (!f) throw std::runtime_error("le fichier « " + source + " » ne peut pas être lu.");
  const std::string contenu((std::istreambuf_iterator<char>(f)), {});
  EcritFichierSur(cible, contenu, quoi);
}

namespace {

class SurfacePdfProvisoire : public Surface {
 public:
  SurfacePdfProvisoire(const std::string& chemin, const Travail& travail)
      : provisoire_(chemin, "fichier PDF"),
        pdf_(SurfacePdf(provisoire_.Chemin(), travail, provisoire_.Cible())) {}

  void DebutDocument(const Papier& papier) override {
    commence_ = true;
    pdf_->DebutDocument(papier);
  }
  void NouvellePage() override {
    if (pdf_) pdf_->NouvellePage();
  }
  void Texte(double x, double y, const Police& police, const std::string& texte) override {
    if (pdf_) pdf_->Texte(x, y, police, texte);
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    if (pdf_) pdf_->Trait(x1, y1, x2, y2, largeur);
  }
  void FinDocument() override {
    if (!pdf_) return;
    pdf_->FinDocument();
    // A document without pages writes nothing, and leaves the target alone.
    if (!commence_) return;
    pdf_.reset();
    VerifiePdf(provisoire_.Chemin(), provisoire_.Cible());
    provisoire_.Remplace();
  }

 private:
  // Declared first, so destroyed last: the drawing is closed before its file
  // is removed.
  FichierProvisoire provisoire_;
  std::unique_ptr<Surface> pdf_;
  bool commence_ = false;
};

}  // namespace

std::unique_ptr<Surface> SurfacePdfSure(const std::string& chemin, const Travail& travail) {
  return std::make_unique<SurfacePdfProvisoire>(chemin, travail);
}

}  // namespace printing
