#include "tests/marbrel/selection_test.h"

// A file without dictionary is checked by the command-line tests.
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
  // A field names its clause alone only once an AVEC has come before it.
  EXPECT_CONTIENT(MessageDe("SSELECT P (1 = \"A\")"),
                  "AVEC ou « ( » attendu (lu : « 1 ») à la position 12");
  // Groups that do not close, close what was never opened, or hold nothing,
  // nested or after AVEC, are pointed at.
  EXPECT_CONTIENT(MessageDe("SSELECT P (AVEC 1 = \"A\" OR AVEC 1 = \"B\""),
                  "Parenthèse ouverte sans parenthèse fermante à la position 11");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC ((1 = \"A\") OR 2 = \"B\""),
                  "Parenthèse ouverte sans parenthèse fermante à la position 16");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC (1 = \"A\"))"),
                  "Parenthèse fermante sans parenthèse ouverte à la position 25");
  EXPECT_CONTIENT(
      MessageDe("SSELECT P AVEC ( ) AND 1 = \"A\""),
      "Groupe vide : une condition est attendue entre les parenthèses à la position 16");
  EXPECT_CONTIENT(
      MessageDe("SSELECT P AVEC (1 = \"A\" OR ())"),
      "Groupe vide : une condition est attendue entre les parenthèses à la position 28");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC"), "Champ ou « ( » attendu après AVEC à la fin");
  // Positions count characters, not bytes.
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC 1 = \"é\" ) "), "à la position 24");
  // The selection's second argument must stay empty.
  EXPECT_THROW(base_->Selectionne("SSELECT P", "X"), marbrel::Erreur);
}

TEST_F(RequeteErreurs, FichierEtChampInconnusSontNommesEtPointes) {
  EXPECT_CONTIENT(MessageDe("SSELECT PP AVEC 1 = \"A\""), "Fichier inconnu « PP » à la position 9");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC Cod = \"A\""),
                  "Champ inconnu « Cod » : absent de DICT P à la position 16");
  EXPECT_CONTIENT(MessageDe("SSELECT P PAR Code PAR Nom"),
                  "Champ inconnu « Nom » : absent de DICT P à la position 24");
  EXPECT_CONTIENT(MessageDe("SSELECT P AVEC Calcul = \"1\""), "que les sélections ne savent pas");
  EXPECT_CONTIENT(MessageDe("SSELECT P", "0 Nom"),
                  "dans la liste des champs « 0 Nom » de la commande");
  EXPECT_CONTIENT(MessageDe("SSELECT P", "0", "Q"),
                  "Le fichier de la phrase (P) n'est pas celui de la commande (Q)");
}

}  // namespace
