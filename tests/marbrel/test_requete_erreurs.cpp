#include "tests/marbrel/selection_test.h"

namespace {

class RequeteErreurs : public SelectionTest {
 protected:
  void SetUp() override {
    SelectionTest::SetUp();
    Ecrit("P", "K1", Rec({"A"}));
    Dictionnaire("P", "Code", "D", "1", "3L");
    Dictionnaire("P", "Calcul", "I", "OCONV(@ID, \"MD2\")", "5R");
  }
};

// m contains x (the message is shown when it does not).
#define EXPECT_CONTIENT(m, x)                                               \
  do {                                                                      \
    std::string m_ = (m);                                                   \
    EXPECT_NE(m_.find(x), std::string::npos) << m_ << "\n  sans : " << (x); \
  } while (0)

TEST_F(RequeteErreurs, UneFauteDeSyntaxeCiteLaPhraseEtDonneLaPosition) {
  std::string phrase = "SSELECT P AVEC 1 ! \"A\"";
  std::string m = MessageDe(phrase);
  EXPECT_CONTIENT(m, "à la position 18");
  EXPECT_CONTIENT(m, "« " + phrase + " »");
  EXPECT_CONTIENT(m, "« ! »");

  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC 1 ="), "Valeur entre guillemets attendue à la fin");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC 1 = \"A"), "guillemet de fin à la position 20");
  EXPECT_CONTIENT(MessageDe("LISTE P"),
                  "SSELECT ou SELECT attendu (lu : « LISTE ») à la position 1");
  EXPECT_CONTIENT(MessageDe("SSELECT"), "Nom de fichier attendu à la fin");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC 1 = \"A\" AND 1 = \"B\""),
                  "AVEC ou « ( » attendu (lu : « 1 ») à la position 28");
  EXPECT_CONTIENT(MessageDe("SSELECT P (AVEC 1 = \"A\" OR AVEC 1 = \"B\""),
                  "Parenthèse ouverte sans parenthèse fermante à la position 11");
  EXPECT_CONTIENT(MessageDe("SSELECT P PAR"), "Champ de tri attendu après PAR à la fin");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC AND"), "Champ attendu après AVEC");
  // Positions count characters, not bytes.
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC 1 = \"é\" ) "), "à la position 24");
}

TEST_F(RequeteErreurs, FichierEtChampInconnusSontNommesEtPointes) {
  EXPECT_CONTIENT(MessageDe("SSELECT PP AVEC 1 = \"A\""), "Fichier inconnu « PP » à la position 9");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC Cod = \"A\""),
                  "Champ inconnu « Cod » : absent de DICT P à la position 16");
  EXPECT_CONTIENT(MessageDe("SSELECT P PAR Code PAR Nom"), "« Nom »");
  EXPECT_CONTIENT(MessageDe("SSELECT P PAR Code PAR Nom"), "à la position 24");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC Calcul = \"1\""), "que les sélections ne savent pas");
  EXPECT_CONTIENT(MessageDe("SSELECT P", "0 Nom"),
                  "dans la liste des champs « 0 Nom » de la commande");
  EXPECT_CONTIENT(MessageDe("SSELECT P", "0", "Q"),
                  "Le fichier de la phrase (P) n'est pas celui de la commande (Q)");
  Ecrit("R", "1", "x");
  EXPECT_CONTIENT(MessageDe("SSELECT R AVEC Nom = \"\""), "n'a pas de dictionnaire (DICT R)");
}

TEST_F(RequeteErreurs, UnSecondArgumentNonVideEstRefuse) {
  marbrel::TabDyn commande;
  commande.Remplace(1, "SSELECT P");
  EXPECT_THROW(base_->Selectionne(commande.Texte(), "X"), marbrel::Erreur);
}

}  // namespace
