#include "found/version.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Version, IsThatOfTheProject) { EXPECT_STREQ(KVFOUND_VERSION_STRING, PROJECT_VERSION); }

TEST(Version, HasItsThreePartsInItsText) {
  EXPECT_EQ(std::to_string(KVFOUND_VERSION_MAJOR) + '.' + std::to_string(KVFOUND_VERSION_MINOR) +
                '.' + std::to_string(KVFOUND_VERSION_PATCH),
            KVFOUND_VERSION_STRING);
}

TEST(Version, OfTheLibraryThatRunsIsThatOfItsHeaders) {
  EXPECT_STREQ(Found::getVersion(), KVFOUND_VERSION_STRING);
  EXPECT_EQ(Found::getVersionNumber(), KVFOUND_VERSION_NUMBER);
}

TEST(Version, OrdersMinorBeforePatch) {
  EXPECT_EQ(KVFOUND_VERSION_NUMBER,
            KVFOUND_VERSION_MAJOR * 10000 + KVFOUND_VERSION_MINOR * 100 + KVFOUND_VERSION_PATCH);
  static_assert(KVFOUND_VERSION_MINOR < 100 && KVFOUND_VERSION_PATCH < 100,
                "1.0.100 would be 1.1.0");
}

#if KVFOUND_VERSION_NUMBER < 10000
#error "The preprocessor can compare versions."
#endif

}  // namespace
