// Outputs written whole or not at all. A document goes first to a temporary
// file in its target's folder (created 0600, less if the umask says so: it
// holds health data), is checked, written to the disk, and only then renamed
// over the target. A run that fails or is interrupted leaves the previous
// file as it was and no temporary file behind.
#pragma once

#include <memory>
#include <string>

#include "printing/imprimantes.h"
#include "printing/raison_systeme.h"
#include "printing/surface.h"

namespace printing {

// A temporary file beside cible, recorded for the interruption handlers
// (provisoires.h) and removed by the destructor unless it was renamed over
// cible. Fails with a French message naming cible when cible is a folder or
// not a regular file (a device, a pipe), when its folder is missing, or when
// the temporary file cannot be created there.
class FichierProvisoire {
 public:
  FichierProvisoire(std::string cible, std::string quoi);
  ~FichierProvisoire();
  FichierProvisoire(const FichierProvisoire&) = delete;
  FichierProvisoire& operator=(const FichierProvisoire&) = delete;

  const std::string& Chemin() const { return chemin_; }
  const std::string& Cible() const { return cible_; }
  // Writes contenu into the temporary file (replacing what it held).
  void Ecrit(const std::string& contenu);
  // Syncs the temporary file to the disk and renames it over the target;
  // fails with a French message (the target unchanged) when either fails.
  void Remplace();

 private:
  std::string cible_;
  std::string quoi_;  // "fichier PDF", for messages
  std::string chemin_;
  bool remplace_ = false;
};

// Fails with a French message naming cible when the file at chemin is not a
// whole PDF: empty, not starting with "%PDF-", or without its "%%EOF"
// trailer at the end (a write cut short by a full disk).
void VerifiePdf(const std::string& chemin, const std::string& cible);

// Writes contenu to chemin through a temporary file (see above).
void EcritFichierSur(const std::string& chemin, const std::string& contenu,
                     const std::string& quoi = "fichier");

// Copies the file source to cible through a temporary file.
void CopieFichierSur(const std::string& source, const std::string& cible,
                     const std::string& quoi = "fichier");

// The PDF file chemin, drawn into a temporary file and put in place only when
// the document has ended and its file is whole.
std::unique_ptr<Surface> SurfacePdfSure(const std::string& chemin, const Travail& travail);

}  // namespace printing
