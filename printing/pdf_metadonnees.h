// What a PDF of ours says about itself, twice: in the information
// dictionary that every reader shows, and in the XMP packet that an archive
// reads (PDF/A-2b wants both, saying the same thing).
#pragma once

#include <ctime>
#include <string>

namespace printing::pdf {

struct Metadonnees {
  std::string titre;   // the job's title: "DOSSIER AIDE A0001"
  std::string auteur;  // "" = no author
  std::string sujet;   // the dossier type and the keys; "" = none. Over 4,000
                       // bytes, the list is cut and its length said.
  std::string createur = "Vesko";
  std::time_t date = 0;  // creation (and modification) time, UTC
};

// The information dictionary, "<<…>>".
std::string DictionnaireInfo(const Metadonnees& m);
// The XMP packet, declaring PDF/A-2b.
std::string PaquetXmp(const Metadonnees& m);

// A PDF text string: "(…)" for plain ASCII, else UTF-16BE in hexadecimal with
// its byte order mark. Invalid UTF-8 bytes count as U+FFFD.
std::string ChainePdf(const std::string& utf8);

// The time a document is made: SOURCE_DATE_EPOCH when set (a reproducible
// build of the same print), else now.
std::time_t DateDuDocument();

// The author written in the PDFs: the setting "impression/auteur" of
// Vesko's settings file (vesko.ini in the user's Vesko configuration folder),
// "" when it is not set.
std::string AuteurDesDocuments();

}  // namespace printing::pdf
