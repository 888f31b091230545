// The run's 32-bit counts: a value that does not fit is an error named in
// French, never a wrap; the page number included.
#include "control/compteur32.h"

#include <gtest/gtest.h>

#include <limits>

#include "db/variable.h"
#include "printing/recording.h"
#include "tests/support/banc.h"

TEST(Compteurs, ACountOrAPageNumberThatDoesNotFitIsAnErrorNeverAWrap) {
  EXPECT_EQ(compteur::Entier32(70000, "Le nombre de personnes"), 70000);
  try {
    compteur::Entier32(2147483648LL, "Le nombre de personnes à imprimer");
    ADD_FAILURE() << "aucune erreur";
  } catch (const std::overflow_error& e) {
    EXPECT_STREQ(e.what(),
                 "Le nombre de personnes à imprimer (2147483648) dépasse la limite d'un entier 32 "
                 "bits (2147483647).");
  }

  banc::Banc b;
  Ctr_Vesko& c = b.Controle();
  printing::Enregistrement rec;
  c.Commence_Sur(
      std::make_unique<printing::Printer>(std::make_unique<printing::RecordingSurface>(&rec)));
  Variable::Principal = banc::Rec({"", "MARTIN", "Paul"});
  std::string code = "S0001";
  c.Num_Page = std::numeric_limits<std::int32_t>::max() - 1;
  c.NewPage(code);
  EXPECT_EQ(c.Num_Page, std::numeric_limits<std::int32_t>::max());
  // The next page cannot be numbered: the error comes before the page is ejected.
  const int pages = c.Imprimante()->PageCount();
  EXPECT_THROW(c.NewPage(code), std::overflow_error);
  EXPECT_EQ(c.Imprimante()->PageCount(), pages);
  EXPECT_EQ(c.Num_Page, std::numeric_limits<std::int32_t>::max());
}
