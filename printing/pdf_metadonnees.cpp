#include "printing/pdf_metadonnees.h"

#include <QSettings>
#include <cstdio>
#include <cstdlib>

#include "printing/pdf_utf8.h"

namespace printing::pdf {

namespace {

// The text as well-formed UTF-8 without control characters (XML refuses
// them, and a reader shows them as boxes): marks and broken bytes become
// U+FFFD, controls become spaces.
std::string TextePropre(const std::string& brut) {
  std::string propre;
  const auto* p = reinterpret_cast<const unsigned char*>(brut.data());
  const auto* fin = p + brut.size();
  while (p < fin) {
    char32_t c = ProchainCaractere(p, fin);
    if (c < 0x20 || c == 0x7F) c = U' ';
    AjouteUtf8(c, propre);
  }
  return propre;
}

std::string EchappeXml(const std::string& texte) {
  std::string sortie;
  for (char c : TextePropre(texte)) {
    switch (c) {
      case '&':
        sortie += "&amp;";
        break;
      case '<':
        sortie += "&lt;";
        break;
      case '>':
        sortie += "&gt;";
        break;
      case '"':
        sortie += "&quot;";
        break;
      default:
        sortie.push_back(c);
    }
  }
  return sortie;
}

std::tm Utc(std::time_t t) {
  std::tm tm{};
  gmtime_r(&t, &tm);
  return tm;
}

std::string DatePdf(std::time_t t) {
  const std::tm tm = Utc(t);
  char s[40];
  std::snprintf(s, sizeof s, "(D:%04d%02d%02d%02d%02d%02dZ)", tm.tm_year + 1900, tm.tm_mon + 1,
                tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
  return s;
}

std::string DateXmp(std::time_t t) {
  const std::tm tm = Utc(t);
  char s[40];
  std::snprintf(s, sizeof s, "%04d-%02d-%02dT%02d:%02d:%02dZ", tm.tm_year + 1900, tm.tm_mon + 1,
                tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
  return s;
}

// An archive refuses strings over 32,767 bytes: a subject listing thousands
// of keys keeps its first ones and says how many there are.
constexpr std::size_t kLongueurSujet = 4000;

std::string Sujet(const std::string& sujet) {
  if (sujet.size() <= kLongueurSujet) return sujet;
  std::size_t cles = 1;
  for (std::size_t i = sujet.find(", "); i != std::string::npos; i = sujet.find(", ", i + 2)) {
    ++cles;
  }
  const std::size_t coupe = sujet.rfind(", ", kLongueurSujet);
  return sujet.substr(0, coupe == std::string::npos ? kLongueurSujet : coupe) + ", … (" +
         std::to_string(cles) + " en tout)";
}

std::string Alternative(const std::string& texte) {
  return "<rdf:Alt><rdf:li xml:lang=\"x-default\">" + EchappeXml(texte) + "</rdf:li></rdf:Alt>";
}

}  // namespace

std::string ChainePdf(const std::string& utf8) {
  const std::string texte = TextePropre(utf8);
  bool ascii = true;
  for (unsigned char c : texte) ascii = ascii && c < 0x80;
  if (ascii) {
    std::string s = "(";
    for (char c : texte) {
      if (c == '(' || c == ')' || c == '\\') s.push_back('\\');
      s.push_back(c);
    }
    return s + ")";
  }
  std::string s = "<FEFF";
  char hex[8];
  const auto* p = reinterpret_cast<const unsigned char*>(texte.data());
  const auto* fin = p + texte.size();
  while (p < fin) {
    const char32_t c = ProchainCaractere(p, fin);
    if (c < 0x10000) {
      std::snprintf(hex, sizeof hex, "%04X", static_cast<unsigned>(c));
      s += hex;
    } else {
      const unsigned v = static_cast<unsigned>(c) - 0x10000;
      std::snprintf(hex, sizeof hex, "%04X", 0xD800 + (v >> 10));
      s += hex;
      std::snprintf(hex, sizeof hex, "%04X", 0xDC00 + (v & 0x3FF));
      s += hex;
    }
  }
  return s + ">";
}

std::string DictionnaireInfo(const Metadonnees& m) {
  std::string d = "<</Title " + ChainePdf(m.titre);
  if (!m.auteur.empty()) d += "/Author " + ChainePdf(m.auteur);
  if (!m.sujet.empty()) d += "/Subject " + ChainePdf(Sujet(m.sujet));
  d += "/Creator " + ChainePdf(m.createur) + "/Producer " + ChainePdf(m.createur) +
       "/CreationDate " + DatePdf(m.date) + "/ModDate " + DatePdf(m.date) + ">>";
  return d;
}

std::string PaquetXmp(const Metadonnees& m) {
  std::string x =
      "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
      "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
      "<rdf:Description rdf:about=\"\"\n"
      " xmlns:dc=\"http://purl.org/dc/elements/1.1/\"\n"
      " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"\n"
      " xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\"\n"
      " xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n"
      "<dc:format>application/pdf</dc:format>\n"
      "<dc:title>" +
      Alternative(m.titre) + "</dc:title>\n";
  if (!m.auteur.empty()) {
    x += "<dc:creator><rdf:Seq><rdf:li>" + EchappeXml(m.auteur) +
         "</rdf:li></rdf:Seq></dc:creator>\n";
  }
  if (!m.sujet.empty()) {
    x += "<dc:description>" + Alternative(Sujet(m.sujet)) + "</dc:description>\n";
  }
  x += "<xmp:CreatorTool>" + EchappeXml(m.createur) + "</xmp:CreatorTool>\n<xmp:CreateDate>" +
       DateXmp(m.date) + "</xmp:CreateDate>\n<xmp:ModifyDate>" + DateXmp(m.date) +
       "</xmp:ModifyDate>\n<pdf:Producer>" + EchappeXml(m.createur) +
       "</pdf:Producer>\n"
       "<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>\n"
       "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>";
  return x;
}

std::time_t DateDuDocument() {
  if (const char* epoque = std::getenv("SOURCE_DATE_EPOCH")) {
    char* fin = nullptr;
    const long long secondes = std::strtoll(epoque, &fin, 10);
    if (fin != epoque && *fin == '\0' && secondes >= 0) return static_cast<std::time_t>(secondes);
  }
  return std::time(nullptr);
}

std::string AuteurDesDocuments() {
  const QSettings reglages(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Vesko"),
                           QStringLiteral("vesko"));
  return reglages.value(QStringLiteral("impression/auteur")).toString().toStdString();
}

}  // namespace printing::pdf
