// The client object a host hands to the control. The control keeps it for the
// host's sake and never uses it.
#pragma once

#include <string>

namespace marbrel {

class Client {
 public:
  explicit Client(std::string utilisateur = "") : utilisateur_(std::move(utilisateur)) {}
  const std::string& Utilisateur() const { return utilisateur_; }

 private:
  std::string utilisateur_;
};

}  // namespace marbrel
