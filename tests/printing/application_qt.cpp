// One QGuiApplication for the whole test program: fonts, QPdfWriter, QPrinter
// and QImage text need it. It is made before the first test and destroyed
// after the last (the program's main comes from gtest_main).
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <memory>

namespace {

class ApplicationQt : public ::testing::Environment {
 public:
  void SetUp() override {
    if (QGuiApplication::instance() == nullptr)
      application_ = std::make_unique<QGuiApplication>(argc_, argv_);
  }
  void TearDown() override { application_.reset(); }

 private:
  int argc_ = 1;
  char nom_[16] = "test_printing";
  char* argv_[2] = {nom_, nullptr};
  std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] ::testing::Environment* const environnement =
    ::testing::AddGlobalTestEnvironment(new ApplicationQt);

}  // namespace
