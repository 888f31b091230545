// One face of Liberation Mono (regular, bold, italic or bold italic) as the
// PDF writer embeds it: characters become glyph numbers while the pages are
// written, and the document ends with a subset of the font holding exactly
// the glyphs used, with the map back to the characters (ToUnicode).
//
// The dossier is laid out on a grid of 0.6 em per character, which is
// Liberation Mono's own advance (it has Courier New's metrics): no shaping,
// one glyph per character. A character the font does not have is drawn as
// "?" — a document for archiving may not point at the empty glyph.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace printing::pdf {

// The metrics of a face in thousandths of an em, as the PDF font descriptor
// gives them; y upwards from the baseline.
struct MetriquesPolice {
  double ascent = 0, descent = 0, cap_height = 0;
  double italic_angle = 0;
  double bbox[4] = {0, 0, 0, 0};
  double souligne_position = 0, souligne_epaisseur = 0;
};

class FacePolice;  // the loaded font file, shared by the documents of a process

class PolicePdf {
 public:
  // The face of Liberation Mono in that style. Fails with a French message
  // when fontconfig does not find it (the fonts-liberation package).
  PolicePdf(bool gras, bool italique);
  ~PolicePdf();
  PolicePdf(const PolicePdf&) = delete;
  PolicePdf& operator=(const PolicePdf&) = delete;

  // Appends the glyph numbers of the UTF-8 text to codes, two bytes each
  // (big-endian), and counts them as used. Invalid UTF-8 bytes count as
  // U+FFFD. Returns the number of characters.
  std::size_t Code(const std::string& texte, std::string& codes);

  // The PostScript name ("LiberationMono-Bold"), without the subset tag.
  const std::string& NomPostScript() const;
  const MetriquesPolice& Metriques() const;
  bool Italique() const { return italique_; }

  // The font program holding the used glyphs (with their numbers kept) and
  // the tag of six capital letters naming that subset. Fails with a French
  // message when HarfBuzz cannot subset the font.
  std::string Sous_Ensemble() const;
  std::string Etiquette() const;
  // The ToUnicode CMap of the used glyphs.
  std::string CarteUnicode() const;

 private:
  std::uint16_t Glyphe(char32_t c);

  std::shared_ptr<const FacePolice> face_;
  bool italique_;
  // Glyph of each code point below 0x3000 (0xFFFF: not looked up yet), the
  // rest in a map: nearly every character of a dossier is in the first table.
  std::vector<std::uint16_t> glyphes_bas_;
  std::map<char32_t, std::uint16_t> glyphes_hauts_;
  // The character each used glyph stands for (0: unused).
  std::vector<char32_t> unicode_du_glyphe_;
};

}  // namespace printing::pdf
