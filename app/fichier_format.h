// --text or --json written as the pages come (one page in memory), into a
// temporary file beside the destination that takes its name once complete:
// a failed or interrupted run leaves the previous file and nothing
// half-written.
#pragma once

#include <fstream>
#include <memory>
#include <string>

#include "printing/sortie_format.h"
#include "printing/sortie_sure.h"
#include "printing/surface.h"

namespace vesko_app {

class FichierFormat {
 public:
  // quoi names the file in messages ("fichier texte").
  FichierFormat(const std::string& chemin, printing::SortieFormat::Format format,
                const std::string& quoi);

  // The surface of the run. Its end of document completes the file and puts
  // it in place, so that a write that fails is an incident of the run (and
  // the access journal records the run as failed), not a message after it.
  std::unique_ptr<printing::Surface> NouvelleSurface();

  // Completes the file and puts it in place, once; fails with a French
  // message naming the file.
  void Termine();
  bool EstTermine() const { return termine_; }

 private:
  printing::FichierProvisoire provisoire_;
  std::ofstream flux_;
  std::unique_ptr<printing::SortieFormat> sortie_;
  bool termine_ = false;
};

}  // namespace vesko_app
