#include "app/usage.h"

#include <regex>
#include <sstream>
#include <vector>

namespace vesko_app {

namespace {

const char* const kGroupeSousCommandes = "Sous-commandes";

class FormatFrancais : public CLI::Formatter {
 public:
  FormatFrancais() {
    label("Usage", "Utilisation ");
    label("OPTIONS", "OPTIONS");
    label("SUBCOMMAND", "SOUS-COMMANDE");
    label("SUBCOMMANDS", "SOUS-COMMANDES");
    label("Positionals", "Arguments");
    label("REQUIRED", "(obligatoire)");
    label("TEXT", "TEXTE");
    label("INT", "ENTIER");
    label("UINT", "ENTIER");
    label("FLOAT", "NOMBRE");
    label("Needs", "Exige");
    label("Excludes", "Exclut");
    label("Env", "Variable");
  }
  // CLI11 writes its own English sentences about required options here.
  std::string make_description(const CLI::App* app) const override {
    const std::string description = app->get_description();
    return description.empty() ? std::string() : description + "\n";
  }
};

std::string Liste(const CLI::App& app) {
  std::string noms;
  for (const CLI::App* sous : app.get_subcommands({})) {
    if (!noms.empty()) noms += ", ";
    noms += sous->get_name();
  }
  return noms;
}

// The deepest sub-command the parse reached: its help is the one to read.
const CLI::App& Atteinte(const CLI::App& app) {
  for (const CLI::App* sous : app.get_subcommands()) return Atteinte(*sous);
  return app;
}

std::string NomComplet(const CLI::App& app) {
  if (app.get_parent() == nullptr) return "vesko";
  return NomComplet(*app.get_parent()) + " " + app.get_name();
}

// "--db" is an option; a bare name is one of the positional arguments.
std::string Designe(const std::string& nom) {
  if (!nom.empty() && nom[0] == '-') return "l'option " + nom;
  return "l'argument « " + nom + " »";
}

std::string Traduit(const CLI::App& atteinte, const CLI::ParseError& erreur) {
  const std::string type = erreur.get_name();
  const std::string texte = erreur.what();
  std::smatch m;
  if (type == "RequiredError") {
    if (texte.rfind("A subcommand", 0) == 0 || texte.rfind("Requires at least", 0) == 0) {
      return "une sous-commande est attendue : " + Liste(atteinte) + ".";
    }
    if (std::regex_match(texte, m, std::regex("(.*) is required"))) {
      return Designe(m[1].str()) + " est obligatoire.";
    }
    return "une option obligatoire manque.";
  }
  // ExtrasError takes the command's name as its own: it is known by its code.
  if (erreur.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError)) {
    // CLI11 lists the extra words last first.
    std::vector<std::string> mots;
    std::istringstream flux(texte.substr(texte.find(": ") + 2));
    for (std::string mot; flux >> mot;) mots.insert(mots.begin(), mot);
    std::string reste;
    for (const std::string& mot : mots) reste += (reste.empty() ? "" : " ") + mot;
    const std::string& premier = mots.empty() ? reste : mots.front();
    if (!premier.empty() && premier[0] == '-') return "option inconnue « " + premier + " ».";
    if (!atteinte.get_subcommands({}).empty()) {
      return "sous-commande inconnue « " + premier + " » : " + Liste(atteinte) + ".";
    }
    return "argument inattendu « " + reste + " ».";
  }
  if (type == "ArgumentMismatch") {
    if (std::regex_match(texte, m, std::regex("(\\S+): [0-9]+ required .* missing"))) {
      return Designe(m[1].str()) + " attend une valeur.";
    }
    if (std::regex_search(texte, m, std::regex("arguments to (\\S+),"))) {
      return "nombre de valeurs incorrect pour " + Designe(m[1].str()) + ".";
    }
    if (std::regex_match(texte, m, std::regex("(\\S+): At (least|Most).*"))) {
      return "nombre de valeurs incorrect pour " + Designe(m[1].str()) + ".";
    }
    if (std::regex_match(texte, m, std::regex("(\\S+) was given a disallowed flag override"))) {
      return Designe(m[1].str()) + " ne prend pas de valeur.";
    }
  }
  if (type == "ConversionError") {
    if (std::regex_match(texte, m, std::regex("Could not convert: (\\S+) = (.*)"))) {
      return "valeur invalide « " + m[2].str() + " » pour " + Designe(m[1].str()) + ".";
    }
    if (std::regex_match(texte, m,
                         std::regex("The value (.*) is not an allowed value for (\\S+)"))) {
      return "valeur invalide « " + m[1].str() + " » pour " + Designe(m[2].str()) + ".";
    }
    return Designe(texte.substr(0, texte.find(' '))) + " ne prend pas de valeur.";
  }
  if (type == "ValidationError" && std::regex_match(texte, m, std::regex("(\\S+): .*"))) {
    return "valeur invalide pour " + Designe(m[1].str()) + ".";
  }
  if (type == "ExcludesError" && std::regex_match(texte, m, std::regex("(\\S+) excludes (\\S+)"))) {
    return Designe(m[1].str()) + " et " + Designe(m[2].str()) + " s'excluent.";
  }
  if (type == "RequiresError" && std::regex_match(texte, m, std::regex("(\\S+) requires (\\S+)"))) {
    return Designe(m[1].str()) + " exige " + Designe(m[2].str()) + ".";
  }
  return "arguments incorrects.";
}

}  // namespace

void PrepareUsageFrancais(CLI::App& app, const std::string& version) {
  app.formatter(std::make_shared<FormatFrancais>());
  app.set_help_flag("-h,--help", "Affiche cette aide et quitte");
  app.set_version_flag("--version", "vesko " + version, "Affiche la version et quitte");
  app.footer("Statut de sortie : 0 réussite, 1 échec, 2 mauvais usage.");
}

void TermineUsageFrancais(CLI::App& app) {
  for (CLI::App* sous : app.get_subcommands({})) {
    sous->group(kGroupeSousCommandes);
    sous->footer("");
    TermineUsageFrancais(*sous);
  }
}

std::optional<std::string> SousCommandeInconnue(const CLI::App& app, int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string mot = argv[i];
    if (!mot.empty() && mot[0] == '-') continue;
    for (const CLI::App* sous : app.get_subcommands({}))
      if (sous->check_name(mot)) return std::nullopt;
    return "sous-commande inconnue « " + mot + " » : " + Liste(app) +
           ". (vesko --help pour l'aide)";
  }
  return std::nullopt;
}

std::string MessageUsage(const CLI::App& app, const CLI::ParseError& erreur) {
  const CLI::App& atteinte = Atteinte(app);
  return Traduit(atteinte, erreur) + " (" + NomComplet(atteinte) + " --help pour l'aide)";
}

}  // namespace vesko_app
