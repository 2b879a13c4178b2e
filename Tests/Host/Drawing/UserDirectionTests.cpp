#include "Host/Drawing/UserDirection.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

namespace host {
namespace {

TEST(UserDirection, IsThatOfTheFirstLanguage) {
    const std::tuple<const char*, const char*, bool> rows[]{
        {"ar_EG.UTF-8", "", true},   {"he_IL", "", true},    {"ps_AF", "", true},  {"ckb_IQ.UTF-8", "", true},
        {"ur_PK.UTF-8", "", true},   {"pa_PK", "", true},    {"pa_IN", "", false}, {"uz_AF", "", true},
        {"ar_Latn_EG", "", false},   {"de_DE", "", false},   {"xx_YY", "", false}, {"arabic", "", false},
        {"de_DE.UTF-8", "fa", true}, {"he_IL", "de", false}, {"C", "ar", false},   {"", "", false},
    };
    for (const auto& [lang, language, isRightToLeft] : rows) {
        setenv("LC_ALL", lang, 1);
        setenv("LANGUAGE", language, 1);
        EXPECT_EQ(userDirection() == Direction::rightToLeft, isRightToLeft) << lang << ' ' << language;
    }
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
}

} // namespace
} // namespace host
