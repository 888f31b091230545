#include <gtest/gtest.h>

#include "marbrel/outils.h"

namespace {

const marbrel::Outils& O() { return marbrel::Outils::Instance(); }

TEST(Dates, LeJourZeroEstLe31Decembre1967EtLesBissextilesComptent) {
  const std::pair<const char*, long> cas[] = {
      {"31/12/1967", 0},  {"29/02/1968", 60},    {"01/03/1968", 61},    {"29/02/2000", 11748},
      {"30/12/1967", -1}, {"29/02/1960", -2862}, {"01/03/1900", -24776}};
  for (auto [date, jour] : cas) {
    EXPECT_EQ(O().Date_Interne(date), std::to_string(jour)) << date;
    EXPECT_EQ(O().Date_Externe(std::to_string(jour)), date);
  }
  // Every day of a century goes there and back.
  for (long j = -12000; j <= 25000; ++j) {
    ASSERT_EQ(O().Date_Interne(O().Date_Externe(j)), std::to_string(j)) << j;
  }
  // 1900 is not a leap year; malformed dates and days give nothing.
  for (const char* faux : {"29/02/1900", "31/04/2001", "1/1/2000", "13/13/2000"}) {
    EXPECT_EQ(O().Date_Interne(faux), "") << faux;
  }
  for (const char* faux : {"", "abc", "12.5", "-"}) EXPECT_EQ(O().Date_Externe(faux), "") << faux;
}

TEST(Montants, PositionsDecimalesArrondiEtAlignement) {
  EXPECT_EQ(O().Format_Montant("7.5", 5, 2), "    7.50");
  EXPECT_EQ(O().Format_Montant("1234.56", 4, 2), "1234.56");
  EXPECT_EQ(O().Format_Montant("123456.7", 4, 2), "123456.70");  // wider: printed whole
  EXPECT_EQ(O().Format_Montant("-2.345", 4, 2), "  -2.35");      // half away from zero
  EXPECT_EQ(O().Format_Montant("9.995", 4, 2), "  10.00");
  EXPECT_EQ(O().Format_Montant("-0.001", 4, 2), "   0.00");
  EXPECT_EQ(O().Format_Montant("12,5", 4, 2), "");
  // Amounts are read exactly, in hundredths: a thousand 0.1 never drift.
  EXPECT_EQ(marbrel::Centimes("-1.005"), -101);
  EXPECT_EQ(marbrel::Centimes("1e3"), std::nullopt);
  EXPECT_EQ(marbrel::Centiemes_En_Texte(-5), "-0.05");
  long long total = 0;
  for (int i = 0; i < 1000; ++i) total += *marbrel::Centimes("0.1");
  EXPECT_EQ(marbrel::Centiemes_En_Texte(total), "100.00");
}

}  // namespace
