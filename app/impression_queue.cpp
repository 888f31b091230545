#include "app/impression_queue.h"

#include <iostream>
#include <stdexcept>

namespace vesko_app {

namespace cups = printing::cups;

EnvoiFile::EnvoiFile(int copies, std::string pdf_secours)
    : reglages_(std::make_shared<cups::ReglagesEnvoi>()),
      envois_(std::make_shared<std::vector<cups::Envoi>>()) {
  reglages_->copies = copies;
  reglages_->pdf_secours = std::move(pdf_secours);
  reglages_->rapport = [envois = envois_](const cups::Envoi& e) { envois->push_back(e); };
}

std::vector<printing::Destination> EnvoiFile::Destinations() const {
  return cups::Destinations(reglages_);
}

printing::Destination EnvoiFile::DestinationPour(const std::string& file) const {
  return {file, [file, reglages = reglages_](const printing::Travail& travail) {
            return cups::SurfaceFile(file, travail, reglages);
          }};
}

bool EnvoiFile::PeutImprimer(const std::string& file) {
  file_ = file;
  const cups::Verification v = cups::Verifie(file);
  if (v.Prete()) return true;
  if (reglages_->pdf_secours.empty()) throw std::runtime_error(v.Message());
  std::cerr << "vesko : " << v.Message() << " Le document est écrit dans " << reglages_->pdf_secours
            << " à la place.\n";
  secours_pris_ = true;
  return false;
}

bool EnvoiFile::Explique(const std::string& message) const {
  for (const cups::Envoi& e : *envois_) {
    if (!e.erreur.empty() && e.erreur == message) return true;
  }
  return false;
}

void EnvoiFile::Conclut(bool attendre, std::chrono::seconds delai) const {
  if (secours_pris_) return;
  if (envois_->empty()) {
    throw std::runtime_error("aucun travail n'a été envoyé : le document n'avait aucune page.");
  }
  for (const cups::Envoi& e : *envois_) {
    if (!e.erreur.empty()) {
      if (e.secours.empty()) throw std::runtime_error(e.erreur);
      std::cerr << "vesko : " << e.erreur << " Le document est écrit dans " << e.secours
                << " à la place.\n";
      continue;
    }
    const std::string nom = e.file.substr(0, e.file.find('/'));
    std::cout << "Travail " << nom << "-" << e.numero << " envoyé à l'imprimante « " << e.file
              << " » (" << e.titre << ").\n"
              << std::flush;
    if (!attendre) continue;
    cups::SuiviAttente suivi;
    suivi.delai = delai;
    suivi.message = [&e](const std::string& message) {
      std::cerr << "vesko : l'imprimante « " << e.file << " » dit : " << message << "\n"
                << std::flush;
    };
    const cups::IssueTravail issue = cups::Attend(e.file, e.numero, suivi);
    const std::string message = cups::Message(e.file, e.numero, issue);
    if (issue.fin != cups::FinTravail::Termine) throw std::runtime_error(message);
    std::string phrase = message;
    phrase[0] = 'L';  // "le travail…" opens the sentence
    std::cout << phrase << "\n";
  }
}

}  // namespace vesko_app
