#include "printing/polices.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>
#include <algorithm>
#include <cctype>
#include <iostream>

namespace printing {

namespace {

constexpr const char* kCourierNew = "Courier New";
// Same advance, ascent and descent as Courier New: the grid stays in place.
constexpr const char* kLiberationMono = "Liberation Mono";

std::string Minuscules(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

bool EstCourierNew(const std::string& nom) { return Minuscules(nom) == Minuscules(kCourierNew); }

bool InstalleeDansQt(const std::string& famille) {
  const QString cherchee = QString::fromStdString(famille);
  const QStringList familles = QFontDatabase::families();
  return std::any_of(familles.begin(), familles.end(), [&](const QString& f) {
    return f.compare(cherchee, Qt::CaseInsensitive) == 0;
  });
}

bool FixeInstallee(const QString& famille) {
  return InstalleeDansQt(famille.toStdString()) && QFontDatabase::isFixedPitch(famille);
}

std::string PlusProcheFixeDansQt(const std::string& nom) {
  // First what the system's own font matching gives for a typewriter font of
  // that name, when it is a real installed fixed-pitch family (not a generic
  // alias such as "monospace", which may stand for anything).
  QFont demandee(QString::fromStdString(nom));
  demandee.setStyleHint(QFont::TypeWriter);
  demandee.setFixedPitch(true);
  const QString trouvee = QFontInfo(demandee).family();
  if (FixeInstallee(trouvee)) return trouvee.toStdString();
  // Then the Courier look-alikes, then any fixed-pitch family.
  for (const char* famille : {"Cousine", "Nimbus Mono PS", "Nimbus Mono L", "FreeMono",
                              "DejaVu Sans Mono", "Noto Sans Mono", "Noto Mono"}) {
    if (FixeInstallee(QString::fromLatin1(famille))) return famille;
  }
  for (const QString& famille : QFontDatabase::families()) {
    if (QFontDatabase::isFixedPitch(famille) && !QFontDatabase::isPrivateFamily(famille)) {
      return famille.toStdString();
    }
  }
  return QFontDatabase::systemFont(QFontDatabase::FixedFont).family().toStdString();
}

}  // namespace

ResolveurPolices::ResolveurPolices(std::function<bool(const std::string&)> installee,
                                   std::function<std::string(const std::string&)> plus_proche_fixe,
                                   std::ostream& avis)
    : installee_(std::move(installee)),
      plus_proche_fixe_(std::move(plus_proche_fixe)),
      avis_(avis) {}

std::string ResolveurPolices::Famille(const std::string& nom) {
  // Font names ignore case: "courier new" is the same font and is announced
  // with it, not a second time.
  const std::string cle = EstCourierNew(nom) ? Minuscules(kCourierNew) : nom;
  std::lock_guard<std::mutex> verrou(mutex_);
  auto trouve = cache_.find(cle);
  if (trouve != cache_.end()) return trouve->second;
  std::string famille = Resout(nom);
  cache_.emplace(cle, famille);
  return famille;
}

std::string ResolveurPolices::Resout(const std::string& nom) {
  if (!EstCourierNew(nom)) return nom;
  if (installee_(kCourierNew)) return kCourierNew;
  if (installee_(kLiberationMono)) return kLiberationMono;
  std::string remplacante = plus_proche_fixe_(nom);
  avis_ << "Vesko : ni la police « " << kCourierNew << " » ni « " << kLiberationMono
        << " » (mêmes dimensions) ne sont installées ; le texte est imprimé en « " << remplacante
        << " », la police à chasse fixe la plus proche. Installez le paquet fonts-liberation "
           "pour retrouver l'aspect prévu."
        << std::endl;
  return remplacante;
}

ResolveurPolices& ResolveurPolices::Systeme() {
  static ResolveurPolices resolveur(InstalleeDansQt, PlusProcheFixeDansQt, std::cerr);
  return resolveur;
}

std::string FamillePolice(const std::string& nom) {
  return ResolveurPolices::Systeme().Famille(nom);
}

}  // namespace printing
