#include "printing/sortie_format.h"

#include <cerrno>
#include <stdexcept>

#include "printing/pdf_ecrivain.h"
#include "printing/print_formats.h"
#include "printing/raison_systeme.h"

namespace printing {

namespace {

constexpr std::size_t kTailleTampon = 256 * 1024;

}  // namespace

// One document after another into the output: the page under way is the
// only one kept.
class SurfaceSortie : public Surface {
 public:
  explicit SurfaceSortie(SortieFormat& sortie) : sortie_(sortie) {}
  ~SurfaceSortie() override {
    // What was drawn of an unfinished document is not lost.
    try {
      Ferme();
    } catch (const std::exception&) {
    }
  }

  void DebutDocument(const Papier&) override {
    Ferme();
    ouverte_ = true;
  }
  void NouvellePage() override {
    Ferme();
    ouverte_ = true;
  }
  void Texte(double x, double y, const Police& police, const std::string& texte) override {
    page_.elements.push_back(ElementTexte{x, y, police, texte});
  }
  void Trait(double x1, double y1, double x2, double y2, int largeur) override {
    page_.elements.push_back(ElementTrait{x1, y1, x2, y2, largeur});
  }
  void FinDocument() override { Ferme(); }

 private:
  void Ferme() {
    if (!ouverte_) return;
    ouverte_ = false;
    PageEnregistree page;
    std::swap(page, page_);
    sortie_.Ecrit(page);
  }

  SortieFormat& sortie_;
  PageEnregistree page_;
  bool ouverte_ = false;
};

SortieFormat::SortieFormat(std::ostream& flux, Format format, std::string destination)
    : flux_(flux), format_(format), destination_(std::move(destination)) {}

std::unique_ptr<Surface> SortieFormat::NouvelleSurface() {
  return std::make_unique<SurfaceSortie>(*this);
}

void SortieFormat::Ecrit(const PageEnregistree& page) {
  if (format_ == Format::Texte) {
    if (pages_ > 0) tampon_ += "\f\n";
    AjouteTextePage(page, tampon_);
  } else {
    tampon_ += pages_ > 0 ? ",\n" : "{\n \"pages\": [\n";
    AjouteJsonPage(page, tampon_);
  }
  ++pages_;
  if (tampon_.size() >= kTailleTampon) Vide();
}

void SortieFormat::Vide() {
  if (!echec_.empty()) throw std::runtime_error(echec_);
  errno = 0;
  flux_.write(tampon_.data(), static_cast<std::streamsize>(tampon_.size()));
  if (!flux_) {
    echec_ = "l'écriture de « " + destination_ + " » a échoué : " + RaisonSysteme(errno) + ".";
    throw std::runtime_error(echec_);
  }
  tampon_.clear();
}

void SortieFormat::Termine() {
  if (format_ == Format::Json) tampon_ += pages_ > 0 ? "\n ]\n}\n" : "{\n \"pages\": []\n}\n";
  Vide();
  errno = 0;
  flux_.flush();
  if (!flux_) {
    echec_ = "l'écriture de « " + destination_ + " » a échoué : " + RaisonSysteme(errno) + ".";
    throw std::runtime_error(echec_);
  }
}

}  // namespace printing
