#include "printing/pdf_document.h"

#include <cmath>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace printing::pdf {

namespace {

constexpr double kPointsParMm = 72.0 / 25.4;
constexpr double kMargePt = kMargeCm * 10.0 * kPointsParMm;

// The printer's line width counts pixels of a 300 dpi printer, as on the
// screen (qt_dessin.cpp): 3 is 0.72 point.
constexpr double kDpiLargeurTrait = 300.0;

long Centiemes(double points) { return std::lround(points * 100.0); }

// A number of hundredths written as PDF writes numbers: "12", "12.5", "-0.07".
void AjouteNombre(std::string& s, long centiemes) {
  if (centiemes < 0) {
    s.push_back('-');
    centiemes = -centiemes;
  }
  s += std::to_string(centiemes / 100);
  const long reste = centiemes % 100;
  if (reste != 0) {
    s.push_back('.');
    s.push_back(static_cast<char>('0' + reste / 10));
    if (reste % 10 != 0) s.push_back(static_cast<char>('0' + reste % 10));
  }
}

std::string Nombre(double v) {
  std::string s;
  AjouteNombre(s, Centiemes(v));
  return s;
}

// Glyph codes as a literal string: only the delimiters and the end-of-line
// bytes (which a reader would normalise) are escaped.
void AjouteChaine(std::string& s, const std::string& codes) {
  s.push_back('(');
  for (char c : codes) {
    switch (c) {
      case '(':
      case ')':
      case '\\':
        s.push_back('\\');
        s.push_back(c);
        break;
      case '\r':
        s += "\\r";
        break;
      case '\n':
        s += "\\n";
        break;
      default:
        s.push_back(c);
    }
  }
  s.push_back(')');
}

const std::string& ProfilSrgb() {
  static const std::string profil = [] {
    std::ifstream f(kProfilSrgb, std::ios::binary);
    std::string octets((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    return octets;
  }();
  if (profil.size() < 128) {
    throw std::runtime_error("le profil de couleur sRGB « " + std::string(kProfilSrgb) +
                             " » est introuvable : le PDF ne peut pas être écrit (installez le "
                             "paquet icc-profiles-free).");
  }
  return profil;
}

const char* const kNomsRessources[4] = {"/R", "/G", "/I", "/GI"};

// An identifier for the trailer: the same print made at another moment, or
// twice in the same second, gets another one.
std::string Identifiant(const Metadonnees& m, std::size_t taille) {
  static unsigned long compteur = 0;
  const std::string graine = m.titre + '\n' + m.sujet + '\n' + std::to_string(m.date) + '\n' +
                             std::to_string(taille) + '\n' + std::to_string(++compteur);
  std::string id;
  std::uint64_t h = std::hash<std::string>{}(graine);
  for (int tour = 0; tour < 2; ++tour) {
    for (int i = 0; i < 8; ++i) id.push_back(static_cast<char>((h >> (8 * i)) & 0xFF));
    h = std::hash<std::string>{}(graine + id);
  }
  return id;
}

}  // namespace

Document::Document(std::ostream& flux, const std::string& destination, const Papier& papier,
                   Metadonnees metadonnees)
    : ecrivain_(flux, destination),
      metadonnees_(std::move(metadonnees)),
      papier_(papier),
      hauteur_pt_(papier.hauteur_mm * kPointsParMm) {
  ProfilSrgb();
  // The regular face is there in every dossier: a missing font is said now.
  polices_[0] = std::make_unique<PolicePdf>(false, false);
  catalogue_ = ecrivain_.Reserve();
  pages_ = ecrivain_.Reserve();
  ressources_ = ecrivain_.Reserve();
}

long Document::X(double twips) const { return Centiemes(kMargePt + twips / 20.0); }
long Document::Y(double twips) const { return Centiemes(hauteur_pt_ - kMargePt - twips / 20.0); }

PolicePdf& Document::Face(const Police& police, int& indice) {
  // Every font name is drawn with Liberation Mono: the page is a grid of
  // Courier New's metrics, which are its own.
  indice = (police.gras ? 1 : 0) + (police.italique ? 2 : 0);
  auto& face = polices_[static_cast<std::size_t>(indice)];
  if (!face) face = std::make_unique<PolicePdf>(police.gras, police.italique);
  return *face;
}

void Document::Texte(double x, double y, const Police& police, const std::string& texte) {
  ecrivain_.Verifie();
  if (texte.empty()) return;
  int indice = 0;
  PolicePdf& face = Face(police, indice);
  const double largeur_car = LargeurCaractere(police.taille);  // twips
  const long taille = Centiemes(police.taille);
  const long base = Y(y) - Centiemes(face.Metriques().ascent * police.taille / 1000.0);

  // Spaces at either end draw nothing: they are left out and the text moved
  // along, so that padded columns cost nothing.
  const std::size_t debut = texte.find_first_not_of(' ');
  if (debut != std::string::npos) {
    const std::size_t fin = texte.find_last_not_of(' ') + 1;
    codes_.clear();
    face.Code(texte.substr(debut, fin - debut), codes_);
    if (police_page_ != indice || taille_page_ != taille) {
      texte_ += kNomsRessources[indice];
      texte_.push_back(' ');
      AjouteNombre(texte_, taille);
      texte_ += " Tf\n";
      police_page_ = indice;
      taille_page_ = taille;
    }
    const long px = X(x + static_cast<double>(debut) * largeur_car);
    AjouteNombre(texte_, px - tx_);
    texte_.push_back(' ');
    AjouteNombre(texte_, base - ty_);
    texte_ += " Td";
    AjouteChaine(texte_, codes_);
    texte_ += "Tj\n";
    tx_ = px;
    ty_ = base;
  }
  if (police.souligne) {
    // The whole piece is underlined, its spaces too, at the font's own
    // position and thickness.
    codes_.clear();
    const std::size_t n = face.Code(texte, codes_);
    const MetriquesPolice& m = face.Metriques();
    const long epaisseur = std::max(1L, Centiemes(m.souligne_epaisseur * police.taille / 1000.0));
    const long milieu = base + Centiemes(m.souligne_position * police.taille / 1000.0);
    AjouteNombre(soulignes_, X(x));
    soulignes_.push_back(' ');
    AjouteNombre(soulignes_, milieu - epaisseur / 2);
    soulignes_.push_back(' ');
    AjouteNombre(soulignes_, Centiemes(static_cast<double>(n) * largeur_car / 20.0));
    soulignes_.push_back(' ');
    AjouteNombre(soulignes_, epaisseur);
    soulignes_ += " re\n";
  }
}

void Document::Trait(double x1, double y1, double x2, double y2, int largeur) {
  ecrivain_.Verifie();
  largeur = std::max(1, largeur);
  if (largeur != largeur_page_) {
    if (largeur_page_ != 0) traits_ += "S\n";
    AjouteNombre(traits_, Centiemes(largeur * 72.0 / kDpiLargeurTrait));
    // Square ends close the corners where a rule meets an edge of the frame.
    traits_ += " w 2 J\n";
    largeur_page_ = largeur;
  }
  AjouteNombre(traits_, X(x1));
  traits_.push_back(' ');
  AjouteNombre(traits_, Y(y1));
  traits_ += " m ";
  AjouteNombre(traits_, X(x2));
  traits_.push_back(' ');
  AjouteNombre(traits_, Y(y2));
  traits_ += " l\n";
}

void Document::FinPage() {
  contenu_.clear();
  if (!texte_.empty()) {
    contenu_ += "BT\n";
    contenu_ += texte_;
    contenu_ += "ET\n";
  }
  if (!traits_.empty()) {
    contenu_ += traits_;
    contenu_ += "S\n";
  }
  if (!soulignes_.empty()) {
    contenu_ += soulignes_;
    contenu_ += "f\n";
  }
  const int flux = ecrivain_.Reserve();
  const int page = ecrivain_.Reserve();
  ecrivain_.Flux(flux, "", contenu_);
  ecrivain_.Objet(page, "<</Type/Page/Parent " + std::to_string(pages_) + " 0 R/Contents " +
                            std::to_string(flux) + " 0 R>>");
  kids_.push_back(page);
  texte_.clear();
  traits_.clear();
  soulignes_.clear();
  police_page_ = -1;
  taille_page_ = 0;
  tx_ = ty_ = 0;
  largeur_page_ = 0;
}

void Document::NouvellePage() { FinPage(); }

void Document::EcritPolice(int indice, int numero_type0) {
  const PolicePdf& face = *polices_[static_cast<std::size_t>(indice)];
  const int cid = ecrivain_.Reserve();
  const int descripteur = ecrivain_.Reserve();
  const int programme = ecrivain_.Reserve();
  const int unicode = ecrivain_.Reserve();
  const std::string nom = "/" + face.Etiquette() + "+" + face.NomPostScript();
  const MetriquesPolice& m = face.Metriques();

  ecrivain_.Objet(numero_type0, "<</Type/Font/Subtype/Type0/BaseFont" + nom +
                                    "/Encoding/Identity-H/DescendantFonts[" + std::to_string(cid) +
                                    " 0 R]/ToUnicode " + std::to_string(unicode) + " 0 R>>");
  // Every glyph is 0.6 em wide: the default width says it once.
  ecrivain_.Objet(cid, "<</Type/Font/Subtype/CIDFontType2/BaseFont" + nom +
                           "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>"
                           "/FontDescriptor " +
                           std::to_string(descripteur) + " 0 R/DW 600/CIDToGIDMap/Identity>>");
  // Flags: fixed pitch (1), non-symbolic (32), italic (64).
  const int drapeaux = 1 + 32 + (face.Italique() ? 64 : 0);
  ecrivain_.Objet(descripteur, "<</Type/FontDescriptor/FontName" + nom + "/Flags " +
                                   std::to_string(drapeaux) + "/FontBBox[" + Nombre(m.bbox[0]) +
                                   " " + Nombre(m.bbox[1]) + " " + Nombre(m.bbox[2]) + " " +
                                   Nombre(m.bbox[3]) + "]/ItalicAngle " + Nombre(m.italic_angle) +
                                   "/Ascent " + Nombre(m.ascent) + "/Descent " + Nombre(m.descent) +
                                   "/CapHeight " + Nombre(m.cap_height) + "/StemV 80/FontFile2 " +
                                   std::to_string(programme) + " 0 R>>");
  const std::string sous_ensemble = face.Sous_Ensemble();
  ecrivain_.Flux(programme, "/Length1 " + std::to_string(sous_ensemble.size()), sous_ensemble);
  ecrivain_.Flux(unicode, "", face.CarteUnicode());
}

void Document::Termine() {
  FinPage();
  std::string polices;
  for (int i = 0; i < 4; ++i) {
    if (!polices_[static_cast<std::size_t>(i)]) continue;
    const int numero = ecrivain_.Reserve();
    EcritPolice(i, numero);
    polices += std::string(kNomsRessources[i]) + " " + std::to_string(numero) + " 0 R";
  }
  ecrivain_.Objet(ressources_, "<</Font<<" + polices + ">>>>");

  std::string kids;
  kids.reserve(kids_.size() * 10);
  for (int k : kids_) kids += std::to_string(k) + " 0 R ";
  const double largeur_pt = papier_.largeur_mm * kPointsParMm;
  ecrivain_.Objet(pages_, "<</Type/Pages/Count " + std::to_string(kids_.size()) + "/MediaBox[0 0 " +
                              Nombre(largeur_pt) + " " + Nombre(hauteur_pt_) + "]/Resources " +
                              std::to_string(ressources_) + " 0 R/Kids[" + kids + "]>>");

  const int info = ecrivain_.Reserve();
  const int xmp = ecrivain_.Reserve();
  const int profil = ecrivain_.Reserve();
  ecrivain_.Objet(info, DictionnaireInfo(metadonnees_));
  // An archive reads the packet as it stands: it is not compressed.
  ecrivain_.Flux(xmp, "/Type/Metadata/Subtype/XML", PaquetXmp(metadonnees_), false);
  ecrivain_.Flux(profil, "/N 3", ProfilSrgb());
  ecrivain_.Objet(catalogue_, "<</Type/Catalog/Pages " + std::to_string(pages_) + " 0 R/Metadata " +
                                  std::to_string(xmp) +
                                  " 0 R/OutputIntents[<</Type/OutputIntent/S/GTS_PDFA1"
                                  "/OutputConditionIdentifier(sRGB IEC61966-2.1)"
                                  "/Info(sRGB IEC61966-2.1)/DestOutputProfile " +
                                  std::to_string(profil) + " 0 R>>]>>");
  ecrivain_.Termine(catalogue_, info, Identifiant(metadonnees_, ecrivain_.Taille()));
}

}  // namespace printing::pdf
