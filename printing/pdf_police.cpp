#include "printing/pdf_police.h"

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include <array>
#include <cstdio>
#include <mutex>
#include <stdexcept>

#include "printing/pdf_utf8.h"

namespace printing::pdf {

namespace {

constexpr const char* kFamille = "Liberation Mono";
constexpr std::uint16_t kInconnu = 0xFFFF;
constexpr char32_t kLimiteTable = 0x3000;

std::string NomStyle(bool gras, bool italique) {
  if (gras && italique) return "Bold Italic";
  if (gras) return "Bold";
  if (italique) return "Italic";
  return "Regular";
}

// The file of the face, through fontconfig; only Liberation Mono itself will
// do, since the grid and the metrics of the page are its own.
std::string FichierPolice(bool gras, bool italique) {
  FcPattern* motif = FcPatternCreate();
  FcPatternAddString(motif, FC_FAMILY, reinterpret_cast<const FcChar8*>(kFamille));
  FcPatternAddInteger(motif, FC_WEIGHT, gras ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(motif, FC_SLANT, italique ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcConfigSubstitute(nullptr, motif, FcMatchPattern);
  FcDefaultSubstitute(motif);
  FcResult resultat = FcResultNoMatch;
  FcPattern* trouve = FcFontMatch(nullptr, motif, &resultat);
  FcPatternDestroy(motif);
  std::string chemin;
  if (trouve != nullptr) {
    FcChar8* famille = nullptr;
    FcChar8* fichier = nullptr;
    int poids = 0, pente = 0;
    if (FcPatternGetString(trouve, FC_FAMILY, 0, &famille) == FcResultMatch &&
        FcPatternGetString(trouve, FC_FILE, 0, &fichier) == FcResultMatch &&
        FcPatternGetInteger(trouve, FC_WEIGHT, 0, &poids) == FcResultMatch &&
        FcPatternGetInteger(trouve, FC_SLANT, 0, &pente) == FcResultMatch &&
        std::string(reinterpret_cast<const char*>(famille)) == kFamille &&
        (poids >= FC_WEIGHT_BOLD) == gras && (pente != FC_SLANT_ROMAN) == italique) {
      chemin = reinterpret_cast<const char*>(fichier);
    }
    FcPatternDestroy(trouve);
  }
  if (chemin.empty()) {
    throw std::runtime_error("la police « " + std::string(kFamille) + " " +
                             NomStyle(gras, italique) +
                             " » est introuvable : le PDF ne peut pas être écrit (installez le "
                             "paquet fonts-liberation).");
  }
  return chemin;
}

std::int16_t Int16(const char* p) {
  return static_cast<std::int16_t>((static_cast<unsigned char>(p[0]) << 8) |
                                   static_cast<unsigned char>(p[1]));
}

std::string Hex4(unsigned v) {
  char tampon[8];
  std::snprintf(tampon, sizeof tampon, "%04X", v & 0xFFFFu);
  return tampon;
}

// A character as UTF-16BE in hexadecimal, surrogate pairs beyond the BMP.
std::string Utf16Hex(char32_t c) {
  if (c < 0x10000) return Hex4(static_cast<unsigned>(c));
  const unsigned v = static_cast<unsigned>(c) - 0x10000;
  return Hex4(0xD800 + (v >> 10)) + Hex4(0xDC00 + (v & 0x3FF));
}

}  // namespace

// The font file loaded once per process and style, and what the documents
// read from it; HarfBuzz's faces and fonts are immutable once set up.
class FacePolice {
 public:
  FacePolice(bool gras, bool italique) {
    const std::string chemin = FichierPolice(gras, italique);
    hb_blob_t* blob = hb_blob_create_from_file_or_fail(chemin.c_str());
    if (blob == nullptr) {
      throw std::runtime_error("la police « " + chemin + " » ne peut pas être lue.");
    }
    face_ = hb_face_create(blob, 0);
    hb_blob_destroy(blob);
    hb_face_make_immutable(face_);
    font_ = hb_font_create(face_);
    const int em = static_cast<int>(hb_face_get_upem(face_));
    hb_font_set_scale(font_, em, em);
    hb_font_make_immutable(font_);
    nombre_glyphes_ = hb_face_get_glyph_count(face_);

    char nom[128] = "";
    unsigned taille = sizeof nom;
    hb_ot_name_get_utf8(face_, HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &taille, nom);
    nom_ = nom;
    if (nom_.empty()) nom_ = "LiberationMono";

    const double mille = 1000.0 / em;
    hb_font_extents_t etendue{};
    hb_font_get_h_extents(font_, &etendue);
    metriques_.ascent = etendue.ascender * mille;
    metriques_.descent = etendue.descender * mille;
    hb_position_t v = 0;
    if (hb_ot_metrics_get_position(font_, HB_OT_METRICS_TAG_CAP_HEIGHT, &v)) {
      metriques_.cap_height = v * mille;
    }
    hb_ot_metrics_get_position_with_fallback(font_, HB_OT_METRICS_TAG_UNDERLINE_OFFSET, &v);
    metriques_.souligne_position = v * mille;
    hb_ot_metrics_get_position_with_fallback(font_, HB_OT_METRICS_TAG_UNDERLINE_SIZE, &v);
    metriques_.souligne_epaisseur = v * mille;
    metriques_.italic_angle = hb_style_get_value(font_, HB_STYLE_TAG_SLANT_ANGLE);
    hb_blob_t* head = hb_face_reference_table(face_, HB_TAG('h', 'e', 'a', 'd'));
    unsigned longueur = 0;
    const char* octets = hb_blob_get_data(head, &longueur);
    if (longueur >= 44) {
      for (int i = 0; i < 4; ++i) metriques_.bbox[i] = Int16(octets + 36 + 2 * i) * mille;
    }
    hb_blob_destroy(head);
  }
  ~FacePolice() {
    hb_font_destroy(font_);
    hb_face_destroy(face_);
  }
  FacePolice(const FacePolice&) = delete;
  FacePolice& operator=(const FacePolice&) = delete;

  hb_face_t* face_ = nullptr;
  hb_font_t* font_ = nullptr;
  unsigned nombre_glyphes_ = 0;
  std::string nom_;
  MetriquesPolice metriques_;
};

namespace {

std::shared_ptr<const FacePolice> Face(bool gras, bool italique) {
  static std::mutex verrou;
  static std::array<std::shared_ptr<const FacePolice>, 4> faces;
  std::lock_guard<std::mutex> garde(verrou);
  auto& face = faces[(gras ? 1 : 0) + (italique ? 2 : 0)];
  if (!face) face = std::make_shared<const FacePolice>(gras, italique);
  return face;
}

}  // namespace

PolicePdf::PolicePdf(bool gras, bool italique)
    : face_(Face(gras, italique)),
      italique_(italique),
      glyphes_bas_(kLimiteTable, kInconnu),
      unicode_du_glyphe_(face_->nombre_glyphes_, 0) {}

PolicePdf::~PolicePdf() = default;

const std::string& PolicePdf::NomPostScript() const { return face_->nom_; }
const MetriquesPolice& PolicePdf::Metriques() const { return face_->metriques_; }

std::uint16_t PolicePdf::Glyphe(char32_t c) {
  std::uint16_t* case_table = nullptr;
  if (c < kLimiteTable) {
    case_table = &glyphes_bas_[c];
    if (*case_table != kInconnu) return *case_table;
  } else {
    auto trouve = glyphes_hauts_.find(c);
    if (trouve != glyphes_hauts_.end()) return trouve->second;
  }
  hb_codepoint_t g = 0;
  char32_t montre = c;
  if (!hb_font_get_nominal_glyph(face_->font_, c, &g) || g == 0) {
    montre = U'?';
    hb_font_get_nominal_glyph(face_->font_, montre, &g);
  }
  const auto glyphe = static_cast<std::uint16_t>(g);
  if (glyphe < unicode_du_glyphe_.size() && unicode_du_glyphe_[glyphe] == 0) {
    unicode_du_glyphe_[glyphe] = montre;
  }
  if (case_table != nullptr) {
    *case_table = glyphe;
  } else {
    glyphes_hauts_.emplace(c, glyphe);
  }
  return glyphe;
}

std::size_t PolicePdf::Code(const std::string& texte, std::string& codes) {
  std::size_t n = 0;
  const auto* p = reinterpret_cast<const unsigned char*>(texte.data());
  const auto* fin = p + texte.size();
  while (p < fin) {
    const char32_t c = ProchainCaractere(p, fin);
    const std::uint16_t g = Glyphe(c);
    codes.push_back(static_cast<char>(g >> 8));
    codes.push_back(static_cast<char>(g & 0xFF));
    ++n;
  }
  return n;
}

std::string PolicePdf::Sous_Ensemble() const {
  hb_subset_input_t* entree = hb_subset_input_create_or_fail();
  if (entree == nullptr) throw std::runtime_error("mémoire insuffisante pour la police du PDF.");
  hb_set_t* glyphes = hb_subset_input_glyph_set(entree);
  hb_set_add(glyphes, 0);
  for (std::size_t g = 0; g < unicode_du_glyphe_.size(); ++g) {
    if (unicode_du_glyphe_[g] != 0) hb_set_add(glyphes, static_cast<hb_codepoint_t>(g));
  }
  // Glyph numbers kept: the pages already hold them. Hinting and the layout
  // tables mean nothing to a PDF reader.
  hb_subset_input_set_flags(entree, HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING);
  hb_set_t* retirees = hb_subset_input_set(entree, HB_SUBSET_SETS_DROP_TABLE_TAG);
  for (hb_tag_t t :
       {HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'),
        HB_TAG('k', 'e', 'r', 'n'), HB_TAG('h', 'd', 'm', 'x'), HB_TAG('L', 'T', 'S', 'H'),
        HB_TAG('V', 'D', 'M', 'X'), HB_TAG('D', 'S', 'I', 'G'), HB_TAG('g', 'a', 's', 'p')}) {
    hb_set_add(retirees, t);
  }
  hb_face_t* sous_ensemble = hb_subset_or_fail(face_->face_, entree);
  hb_subset_input_destroy(entree);
  if (sous_ensemble == nullptr) {
    throw std::runtime_error("la police « " + face_->nom_ +
                             " » n'a pas pu être réduite aux caractères du PDF.");
  }
  hb_blob_t* blob = hb_face_reference_blob(sous_ensemble);
  unsigned longueur = 0;
  const char* octets = hb_blob_get_data(blob, &longueur);
  std::string programme(octets, longueur);
  hb_blob_destroy(blob);
  hb_face_destroy(sous_ensemble);
  return programme;
}

std::string PolicePdf::Etiquette() const {
  // Derived from the glyphs used: two documents using the same characters
  // carry the same subset under the same name.
  std::uint64_t h = 1469598103934665603ull;
  for (std::size_t g = 0; g < unicode_du_glyphe_.size(); ++g) {
    if (unicode_du_glyphe_[g] == 0) continue;
    h = (h ^ g) * 1099511628211ull;
  }
  h ^= std::hash<std::string>{}(face_->nom_);
  std::string etiquette;
  for (int i = 0; i < 6; ++i) {
    etiquette.push_back(static_cast<char>('A' + h % 26));
    h /= 26;
  }
  return etiquette;
}

std::string PolicePdf::CarteUnicode() const {
  std::vector<std::string> lignes;
  for (std::size_t g = 0; g < unicode_du_glyphe_.size(); ++g) {
    if (unicode_du_glyphe_[g] == 0) continue;
    lignes.push_back("<" + Hex4(static_cast<unsigned>(g)) + "> <" +
                     Utf16Hex(unicode_du_glyphe_[g]) + ">\n");
  }
  std::string cmap =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
  // At most 100 entries per block.
  for (std::size_t i = 0; i < lignes.size(); i += 100) {
    const std::size_t n = std::min<std::size_t>(100, lignes.size() - i);
    cmap += std::to_string(n) + " beginbfchar\n";
    for (std::size_t k = i; k < i + n; ++k) cmap += lignes[k];
    cmap += "endbfchar\n";
  }
  cmap += "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
  return cmap;
}

}  // namespace printing::pdf
