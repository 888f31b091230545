// Which installed font family draws a font name of the print run.
//
// The dossier is laid out on a grid of "Courier New" characters: columns are
// padded with spaces and the frames are ruled at fixed centimetres, so the
// font that replaces it must have the same metrics. "Courier New" resolves to
// the real Courier New when it is installed, else to "Liberation Mono" (the
// metric-compatible font of fonts-liberation). When neither is there, the
// nearest fixed-pitch font that Qt finds is used and a French notice names it
// once on standard error: the print goes on, and the user knows why the page
// looks different. Any other name is used as it is.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <ostream>
#include <string>

namespace printing {

class ResolveurPolices {
 public:
  // installee(famille): whether that family is installed (exact name, case
  // ignored). plus_proche_fixe(nom): the fixed-pitch family that best stands
  // for nom. The notice is written to avis, which must outlive the resolver.
  ResolveurPolices(std::function<bool(const std::string&)> installee,
                   std::function<std::string(const std::string&)> plus_proche_fixe,
                   std::ostream& avis);

  // The family that draws nom. The answer is computed once per name and kept;
  // the notice of a replacement is therefore written at most once per name.
  // Safe to call from several threads.
  std::string Famille(const std::string& nom);

  // The process-wide resolver over Qt's font database, writing to standard
  // error. Needs a QGuiApplication (or QApplication) to exist.
  static ResolveurPolices& Systeme();

 private:
  std::string Resout(const std::string& nom);

  std::function<bool(const std::string&)> installee_;
  std::function<std::string(const std::string&)> plus_proche_fixe_;
  std::ostream& avis_;
  std::mutex mutex_;
  std::map<std::string, std::string> cache_;
};

// Shorthand for ResolveurPolices::Systeme().Famille(nom).
std::string FamillePolice(const std::string& nom);

}  // namespace printing
