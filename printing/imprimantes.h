// The system's printer list, as the control sees it: the print queues of the
// system (CUPS, through Qt) followed by the built-in "PDF" printer. A choice is
// an index in this list. Hosts and the command line may replace the list (a
// recording printer for tests, a fixed PDF file for a batch).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "printing/surface.h"

namespace printing {

// What the surface of one print document needs to know.
struct Travail {
  std::string titre;  // job title: the dossier type and the first key
  int copies = 1;
  std::string sujet{};  // what it holds: the dossier type and every key ("" = unsaid)
};

struct Destination {
  std::string nom;
  // Opens the surface of one print document on this destination.
  std::function<std::unique_ptr<Surface>(const Travail&)> ouvre;
};

class ListeImprimantes {
 public:
  // The process-wide list the control chooses from. Until a list is installed
  // it is the system's (see Systeme()).
  static ListeImprimantes& Courante();

  void Installe(std::vector<Destination> destinations) {
    destinations_ = std::move(destinations);
    installee_ = true;
  }
  const std::vector<Destination>& Destinations();

  // The system's queues (the default one first) then "PDF", which writes to
  // the file FichierPdf() names.
  static std::vector<Destination> Systeme();
  static void FixeFichierPdf(const std::string& chemin);
  static const std::string& FichierPdf();

 private:
  std::vector<Destination> destinations_;
  bool installee_ = false;
};

}  // namespace printing
