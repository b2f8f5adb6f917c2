#include "core/attributes.h"
#include "core/folders.h"
#include "core/persistant_data.h"
#include "overlays/gps_own_ship.h"
#include "support/temporary_root.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

using Ship = COverlayGPSPosition;

TEST(OwnShipSettings, SurviveARestart)
{
    const CSettingsKeeper keeper;
    const CTemporaryRoot root;
    PersistantData::LoadAll("zentara");
    Ship::velocity_vector_scale = 7.25F;
    Ship::gc_color = {0.0F, 1.0F, 0.0F};
    Ship::averaging_time = 12.5;
    Ship::show_vector = false;
    Ship::use_averaged_direction = true;
    Ship::compass_cal.SetText("1.5,-2,3");
    Ship::range_ring_radius = 0.125F;
    Ship::num_range_rings = 4;
    Ship::SettingsChanged();
    ASSERT_TRUE(PersistantData::SaveAll());

    std::string calibration;
    EXPECT_TRUE(PersistantData::GetValue("COverlayGPSPosition:compass_calibration", calibration));
    EXPECT_EQ(calibration.substr(0, 27), "1.500000,-2.000000,3.000000");
    CSettingsKeeper::Restore();
    PersistantData::LoadAll("zentara");
    EXPECT_EQ(Ship::velocity_vector_scale, 7.25F);
    EXPECT_EQ(Ship::gc_color, GraphicsColor(0.0F, 1.0F, 0.0F));
    EXPECT_EQ(Ship::averaging_time, 12.5);
    EXPECT_FALSE(Ship::show_vector);
    EXPECT_TRUE(Ship::use_averaged_direction);
    EXPECT_EQ(Ship::compass_cal.table[1], -2.0F);
    EXPECT_EQ(Ship::compass_cal.table[CompassCalibration::kSteps], 1.5F) << "the copy of the first";
    EXPECT_EQ(Ship::range_ring_radius, 0.125F);
    EXPECT_EQ(Ship::num_range_rings, 4);
    EXPECT_EQ(Ship::theLatestPosition.colour, QColor(0, 255, 0)) << "the ship takes the colour that was loaded";
}

TEST(OwnShipSettings, AnEditedFileCannotHangOrPoisonTheShip)
{
    const CSettingsKeeper keeper;
    CAttributes map;
    map.AddString("COverlayGPSPosition:num_range_rings=0x7fffffff&COverlayGPSPosition:range_ring_radius=-5.0&"
                  "COverlayGPSPosition:vector_scale=1e30.&COverlayGPSPosition:averaging_time=-3.5&"
                  "COverlayGPSPosition:compass_calibration=4,5,x,7,8");
    Ship::compass_cal.table[2] = 30.0F;
    PersistantData::LoadFrom(map);
    EXPECT_LE(Ship::num_range_rings, 5);
    EXPECT_GE(Ship::range_ring_radius, 0.0F);
    EXPECT_LE(Ship::velocity_vector_scale, 1440.0F);
    EXPECT_GE(Ship::averaging_time, 0.0);
    const float* const table = Ship::compass_cal.table;
    EXPECT_EQ(table[0], 4.0F);
    EXPECT_EQ(table[1], 5.0F);
    EXPECT_EQ(table[2], 30.0F) << "what cannot be read stays";
    EXPECT_EQ(table[3], 0.0F) << "and so does all behind it";
}

class OdometerFile : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(getAppDirectory());
        before = Ship::theLatestPosition.odometer_total;
    }
    void TearDown() override { Ship::theLatestPosition.odometer_total = before; }
    std::string path() const { return getAppDirectory() + "/gpsdata.zttf"; }

    CTemporaryRoot root;
    double before = 0.0;
};

TEST_F(OdometerFile, HoldsTheTotal)
{
    double& total = Ship::theLatestPosition.odometer_total;
    EXPECT_FALSE(Ship::LoadOdometer()) << "no file yet";
    total = 123456.75;
    ASSERT_TRUE(Ship::SaveOdometer());
    EXPECT_EQ(std::filesystem::file_size(path()), 4U + 9U + 5U + 8U) << "signature, magic, one section of 8 bytes";
    total = 0.0;
    ASSERT_TRUE(Ship::LoadOdometer());
    EXPECT_EQ(total, 123456.75);
}

TEST_F(OdometerFile, ADamagedOneLeavesTheTotal)
{
    double& total = Ship::theLatestPosition.odometer_total;
    total = 1e300 * 1e300; // not a distance
    ASSERT_TRUE(Ship::SaveOdometer());
    total = 42.0;
    Ship::LoadOdometer();
    EXPECT_EQ(total, 42.0);
    std::ofstream(path(), std::ios::trunc) << "garbage";
    EXPECT_FALSE(Ship::LoadOdometer());
    EXPECT_EQ(total, 42.0);
}

} // namespace
