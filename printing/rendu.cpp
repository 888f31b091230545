#include "printing/rendu.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <variant>

#include "printing/qt_dessin.h"
#include "printing/sortie_sure.h"

namespace printing {

namespace {

void DessineElements(const PageEnregistree& page, Surface& surface) {
  for (const Element& e : page.elements) {
    if (const auto* t = std::get_if<ElementTexte>(&e)) {
      surface.Texte(t->x, t->y, t->police, t->texte);
    } else {
      const auto& l = std::get<ElementTrait>(e);
      surface.Trait(l.x1, l.y1, l.x2, l.y2, l.largeur);
    }
  }
}

void DessineElements(const PageEnregistree& page, DessinQt& dessin) {
  for (const Element& e : page.elements) {
    if (const auto* t = std::get_if<ElementTexte>(&e)) {
      dessin.Texte(t->x, t->y, t->police, t->texte);
    } else {
      const auto& l = std::get<ElementTrait>(e);
      dessin.Trait(l.x1, l.y1, l.x2, l.y2, l.largeur);
    }
  }
}

}  // namespace

void Rejoue(const Enregistrement& enregistrement, Surface& surface) {
  if (enregistrement.pages.empty()) return;
  surface.DebutDocument(enregistrement.papier);
  bool premiere = true;
  for (const PageEnregistree& page : enregistrement.pages) {
    if (!premiere) surface.NouvellePage();
    premiere = false;
    DessineElements(page, surface);
  }
  surface.FinDocument();
}

namespace {

// The name of page n's image: page-001.png, page-002.png…
std::string NomDePage(size_t n) {
  char nom[32];
  std::snprintf(nom, sizeof nom, "page-%03zu.png", n);
  return nom;
}

// Removes the page images of the folder (only names this program gives,
// page-NNN.png): pages of another run left there would read as pages of
// this one, another person's among them.
void RetirePages(const std::string& dossier) {
  std::error_code erreur;
  for (const auto& entree : std::filesystem::directory_iterator(dossier, erreur)) {
    const std::string nom = entree.path().filename().string();
    size_t n = 0;
    int lus = 0;
    if (std::sscanf(nom.c_str(), "page-%zu.png%n", &n, &lus) == 1 &&
        static_cast<size_t>(lus) == nom.size() && nom == NomDePage(n)) {
      std::filesystem::remove(entree.path(), erreur);
    }
  }
}

}  // namespace

std::vector<std::string> EcritPng(const Enregistrement& enregistrement, const std::string& dossier,
                                  int dpi) {
  if (dpi < 10 || dpi > 1200) {
    throw std::runtime_error("résolution PNG invalide : " + std::to_string(dpi) +
                             " points par pouce (attendu entre 10 et 1200).");
  }
  if (!QDir().mkpath(QString::fromStdString(dossier))) {
    throw std::runtime_error("le dossier « " + dossier + " » ne peut pas être créé.");
  }
  const Papier& papier = enregistrement.papier;
  const QSize pixels(static_cast<int>(std::lround(papier.largeur_mm * dpi / 25.4)),
                     static_cast<int>(std::lround(papier.hauteur_mm * dpi / 25.4)));
  const int points_par_metre = static_cast<int>(std::lround(dpi / 0.0254));
  // The images of an earlier run go first: from then on the folder holds
  // only this run's pages, whole, whatever happens — each image is written
  // to a temporary file beside its name (0600: it holds health data) and
  // named at once, so that at most one temporary file is pending, and an
  // interruption removes it. A run that fails removes the pages it wrote.
  RetirePages(dossier);
  std::vector<std::string> chemins;
  try {
    for (size_t i = 0; i < enregistrement.pages.size(); ++i) {
      QImage image(pixels, QImage::Format_RGB32);
      // The image's resolution is what turns point sizes into pixels.
      image.setDotsPerMeterX(points_par_metre);
      image.setDotsPerMeterY(points_par_metre);
      image.fill(Qt::white);
      {
        QPainter painter(&image);
        // Smooth letters, but rules left crisp: a ruled line one pixel wide
        // would otherwise spread in grey over two.
        painter.setRenderHint(QPainter::TextAntialiasing);
        const double marge = kMargeCm * 10.0 * dpi / 25.4;
        painter.translate(marge, marge);
        DessinQt dessin(painter);
        DessineElements(enregistrement.pages[i], dessin);
      }
      const std::string chemin = (std::filesystem::path(dossier) / NomDePage(i + 1)).string();
      QByteArray png;
      QBuffer tampon(&png);
      tampon.open(QIODevice::WriteOnly);
      if (!image.save(&tampon, "PNG")) {
        throw std::runtime_error("l'image « " + chemin + " » ne peut pas être écrite.");
      }
      FichierProvisoire fichier(chemin, "fichier PNG");
      fichier.Ecrit(std::string(png.constData(), static_cast<size_t>(png.size())));
      fichier.Remplace();
      chemins.push_back(chemin);
    }
  } catch (...) {
    RetirePages(dossier);
    throw;
  }
  return chemins;
}

}  // namespace printing
