#include "write_faults.h"

#include "core/clock.h"
#include "core/files.h"
#include "overlays/gps_position.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "support/temporary_root.h"

#include <fstream>
#include <map>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

// Every step of a save is broken in every way, each in a process of its own. What a restart would read afterwards is
// compared byte by byte with the files of before and of after.

namespace {

constexpr double kNow = 1.78e9; ///< seconds since 1970

/// The user's files by their names.
using Files = std::map<std::string, std::string>;

void SaveAll(bool& good)
{
    good = g_mark_manager.SaveIfNeeded();
    good = g_track_manager.SaveIfNeeded() && good;
    good = COverlayGPSPosition::SaveOdometer() && good;
}

/// Sails on: one mark, one waypoint, one track and some miles more, of which each goes into a file of its own.
void SailOn(int track_points)
{
    g_mark_manager.CreateNewMark(nullptr, 50.0 + static_cast<double>(g_mark_manager.marks.size()), -4.0);
    if (g_mark_manager.routes.empty()) {
        g_mark_manager.routes.push_back(new COverlayRoute);
        g_mark_manager.routes.back()->GetObjectID();
    }
    COverlayRoute& route = *g_mark_manager.routes.front();
    route.AddWaypoint(50.0 + static_cast<double>(route.waypoints.size()), -4.0, nullptr, {}, {});
    route.Dispatch(COverlayObject::kChanged);
    auto* const track = new COverlayTrack;
    for (int i = 0; i < track_points; ++i) track->addPoint({50.0 + 1e-5 * i, -4.0, kNow + 20.0 * i, 0.0F}, false);
    track->GetObjectID();
    g_track_manager.AddTrack(track);
    COverlayGPSPosition::theLatestPosition.odometer_total += 1000.0;
}

class PowerCut : public testing::Test {
protected:
    void SetUp() override
    {
        if (zt_arm_write_fault == nullptr) GTEST_FAIL() << "to be run by ctest, which preloads libzt_write_faults.so";
        SetClock([] { return kNow; });
        ASSERT_FALSE(g_mark_manager.LoadFromFile() || g_track_manager.LoadFromFile()) << "a new folder";
        SailOn(40'000); // more than is gathered before a write
        bool good = false;
        SaveAll(good);
        ASSERT_TRUE(good);
        old_files = Read();
        SailOn(100);
    }
    void TearDown() override
    {
        g_mark_manager.ClearAll();
        g_track_manager.ClearAll();
        SetClock({});
    }

    static Files Read()
    {
        Files files;
        for (const char* name : {"marks.zttf", "routes.zttf", "tracks.zttf", "gpsdata.zttf"})
            read_whole_file(getAppDirectory(name), files[name]);
        return files;
    }
    static void Write(const Files& files)
    {
        for (const auto& [name, bytes] : files) std::ofstream(getAppDirectory(name.c_str()), std::ios::binary) << bytes;
    }
    /// Saves in a process of its own with that fault; what it exits with, -1 when it was killed. `steps` in the process
    /// are its exit code when there is no fault.
    static int SaveUnder(WriteFault fault, long at)
    {
        const pid_t child = fork();
        if (child == 0) {
            zt_arm_write_fault(fault, at);
            bool good = false;
            SaveAll(good);
            if (fault == WriteFault::kNone) _exit(static_cast<int>(zt_write_steps()));
            if (good) _exit(kSaved);
            // The disk has room again: the next save makes up for the failed one.
            zt_arm_write_fault(WriteFault::kNone, 0);
            SaveAll(good);
            _exit(good && Read() == new_files ? kSavedLater : kLost);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    enum Exit { kSaved = 0, kSavedLater = 1, kLost = 2 };
    CTemporaryRoot root;
    Files old_files;
    static inline Files new_files;
};

TEST_F(PowerCut, LeavesTheOldOrTheNewFileWhole)
{
    const int steps = SaveUnder(WriteFault::kNone, 0);
    ASSERT_GE(steps, 4 * 4) << "open, write, flush and rename of each file at least";
    new_files = Read();
    for (const auto& [name, bytes] : new_files) ASSERT_NE(bytes, old_files[name]) << name;

    const struct {
        const char* name;
        WriteFault fault;
        bool killed;
    } faults[] = {{"killed", WriteFault::kKill, true},
                  {"killed_within_a_write", WriteFault::kTorn, true},
                  {"power_cut", WriteFault::kPowerCut, true},
                  {"disk_full", WriteFault::kFull, false},
                  {"io_error", WriteFault::kError, false}};
    for (const auto& [name, fault, killed] : faults) {
        int dead = 0;
        for (int step = 0; step < steps; ++step) {
            Write(old_files);
            const int end = SaveUnder(fault, step);
            dead += end < 0 ? 1 : 0;
            ASSERT_NE(end, kLost) << name << " at " << step;
            for (const auto& [file, bytes] : Read())
                ASSERT_TRUE(bytes == old_files[file] || bytes == new_files[file])
                    << name << " at " << step << ": " << file;
        }
        EXPECT_EQ(dead > 0, killed) << name;
        EXPECT_EQ(SaveUnder(WriteFault::kNone, 0), steps) << "what a broken save left behind is in nobody's way";
        EXPECT_EQ(Read(), new_files) << name;
    }

    EXPECT_TRUE(g_mark_manager.LoadFromFile());
    EXPECT_TRUE(g_track_manager.LoadFromFile());
    EXPECT_TRUE(COverlayGPSPosition::LoadOdometer());
    EXPECT_EQ(g_mark_manager.marks.size(), 2U);
    EXPECT_EQ(g_mark_manager.routes.front()->waypoints.size(), 2U);
    EXPECT_EQ(g_track_manager.size(), 2U);
}

} // namespace
