#include "app/window_geometry.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowGeometry, SavedPlaceOnlyOnTheSameScreen)
{
    const QSize screen(1920, 1080);
    const struct {
        const char* name;
        QRect saved;
        QSize saved_available;
        QSize available;
        QRect expected;
    } cases[] = {
        {"nothing_saved_is_centred", {}, {}, screen, {448, 156, 1024, 768}},
        {"same_screen", {10, 20, 800, 600}, screen, screen, {10, 20, 800, 600}},
        {"another_screen", {10, 20, 800, 600}, {1280, 1024}, screen, {448, 156, 1024, 768}},
        {"too_narrow", {10, 20, 639, 600}, screen, screen, {10, 20, 1024, 600}},
        {"too_low", {10, 20, 640, 479}, screen, screen, {10, 20, 640, 768}},
        {"small_screen_clips", {}, {}, {800, 480}, {0, 0, 800, 480}},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(WindowGeometry(row.saved, row.saved_available, row.available), row.expected) << row.name;
    }
}

} // namespace
