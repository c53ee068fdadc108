#include "fit/model/model_copy.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "fit/model/curve_fit_file.h"
#include "model/odd_model.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

TEST(ModelCopy, ComesBackFromItsStoredForm) {
  const FitSettings settings = OddSettings();
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    TCurFit fit;
    fit.SetSettings(settings, MarkModified::Yes);
    TCurFit back;
    back.AddParameter(Parameter("gone"));
    LoadFromStream(back, SaveToStream(fit, mode), Compile::No);
    EXPECT_EQ(back.Settings(), settings);
    EXPECT_FALSE(back.Modified());
    TCurFit assigned;
    Assign(assigned, fit);
    EXPECT_EQ(assigned.Settings(), settings);
    EXPECT_DOUBLE_EQ(assigned.Value(2), 0.5);
  }
  const std::string text = StoredModel({}, WriterMode::Text);
  EXPECT_TRUE(
      text.starts_with("\x06\x09"
                       "CurFit39S\x06\x01"
                       "0"))
      << text;
  EXPECT_TRUE(
      text.ends_with("\x06\x06"
                     "End 0S\x06\x05"
                     "false"))
      << text;
}

TEST(ModelCopy, PassesOverStoredValuesOutOfRange) {
  FitSettings wrong;
  wrong.Status = static_cast<FitStatus>(4);
  wrong.ProcType = static_cast<FitProcType>(5);
  wrong.Tolerance = 0;
  wrong.IterMax = 0;
  wrong.NPoints = 0;
  EXPECT_EQ(ReadStoredModel(StoredModel(wrong, WriterMode::Typed)), FitSettings());
  FitSettings twice;
  twice.parameters.resize(3);
  twice.parameters[1].Name = "p";
  twice.parameters[2].Name = "";
  TCurFit fit;
  LoadFromStream(fit, StoredModel(twice, WriterMode::Typed), Compile::No);
  EXPECT_EQ(fit.NParams(), 1);
}

TEST(ModelCopy, SurvivesDamageAnywhere) {
  const std::string whole = StoredModel(OddSettings(), WriterMode::Typed);
  const auto refused = [](const std::string& bytes) {
    TCurFit fit;
    fit.AddParameter(Parameter("gone"));
    try {
      LoadFromStream(fit, bytes, Compile::Yes);
    } catch (const StreamError&) {
      EXPECT_EQ(fit.NParams(), 0);
      return true;
    } catch (const Error&) {
      return false;
    }
    EXPECT_LE(fit.NParams(), 2);
    return false;
  };
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(refused(whole.substr(0, size))) << size;
  }
  EXPECT_TRUE(refused(whole + '\0'));
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      std::string damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      refused(damaged);
    }
  }
}

}  // namespace
}  // namespace tarnwick
