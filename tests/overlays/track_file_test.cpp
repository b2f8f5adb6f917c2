#include "core/files.h"
#include "track_world.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>

namespace {

std::string Bytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Builds a file of tracks byte by byte.
struct CBuilder {
    template <class T>
    CBuilder& Add(const T& value)
    {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    CBuilder& Text(const std::string& text)
    {
        Add(static_cast<std::uint32_t>(text.size()));
        bytes += text;
        return *this;
    }
    CBuilder& Section(const CBuilder& content)
    {
        bytes += '\xBE';
        Add(static_cast<std::uint32_t>(content.bytes.size() + 5));
        bytes += content.bytes;
        return *this;
    }
    CBuilder& Colour(float red, float green, float blue) { return Add(red).Add(green).Add(blue).Add(1.0F); }
    CBuilder& Point(double lat, double lon, double time, float altitude)
    {
        return Add(lat).Add(lon).Add(time).Add(altitude).Add(std::uint32_t{0});
    }
    /// The tracks' file around the content of its one section.
    static std::string File(const CBuilder& content)
    {
        return CBuilder().Add(0x73ACF249U).Section(CBuilder().Add(0x0A2089E8U)).Section(content).bytes;
    }
    std::string bytes;
};

CBuilder SectionOf(std::uint32_t count, int points)
{
    CBuilder section;
    section.Add(count).Add(32U);
    for (int i = 0; i < points; ++i) section.Point(50.0 + 0.001 * i, -3.0, 1.6e9 + 10.0 * i, 1.5F);
    return section;
}

CBuilder TrackRecord(const std::string& name, const std::vector<CBuilder>& sections)
{
    CBuilder track;
    track.Text(name).Colour(1.0F, 0.5F, 0.25F).Add(3.0F).Add(static_cast<std::uint32_t>(sections.size()));
    for (const CBuilder& section : sections) track.Section(section);
    return track.Text("a comment").Add(2U);
}

CBuilder SyncBlock(std::uint64_t id, double modified, bool deleted, double created)
{
    return CBuilder().Add(id).Add(false).Add(modified).Add(deleted).Add(created).Add(!deleted).Add(true);
}

TEST_F(TrackTest, TheFileHasItsFixedForm)
{
    CBuilder content;
    content.Add(1U);
    content.Section(TrackRecord("one", {SectionOf(3, 3)}).Section(SyncBlock(7, 1.65e9, false, 1.6e9)).Text("Trips"));
    content.Section(TrackRecord("T#", {}).Section(SyncBlock(0, 1.65e9, false, 1.6e9)).Text(""));
    WriteBytes(File(), CBuilder::File(content));
    ASSERT_TRUE(g_track_manager.LoadFromFile());
    ASSERT_EQ(g_track_manager.size(), 1U);
    const COverlayTrack& track = *Track();
    EXPECT_EQ(track.name, "one");
    EXPECT_EQ(track.comment, "a comment");
    EXPECT_EQ(track.category, "Trips");
    EXPECT_EQ(track.colour, GraphicsColor(1.0F, 0.5F, 0.25F));
    EXPECT_EQ(track.line_width, 3.0F);
    EXPECT_EQ(track.line_style, 2);
    EXPECT_EQ(track.object_id, 7U);
    EXPECT_TRUE(track.locked);
    EXPECT_EQ(track.created, 1.6e9);
    ASSERT_EQ(track.getTotalPoints(), 3);
    EXPECT_EQ(PointsOf(track)[1], (CTrackPoint{50.001, -3.0, 1.6e9 + 10.0, 1.5F}));

    g_track_manager.SetModified();
    ASSERT_TRUE(g_track_manager.SaveIfNeeded());
    EXPECT_EQ(Bytes(File()), CBuilder::File(content));
}

TEST_F(TrackTest, ARecordOfAnOlderProgramKeepsDefaults)
{
    CBuilder bare;
    bare.Text("bare").Colour(0.0F, 0.0F, 1.0F).Add(1.0F).Add(1U).Section(SectionOf(3, 3));
    WriteBytes(File(), CBuilder::File(CBuilder().Add(1U).Section(bare)));
    EXPECT_TRUE(g_track_manager.LoadFromFile());
    ASSERT_EQ(g_track_manager.size(), 1U);
    EXPECT_EQ(Track()->line_style, 0);
    EXPECT_TRUE(Track()->visible);
    EXPECT_EQ(Track()->object_id, 0U);
    EXPECT_EQ(g_track_manager.DefaultTrack().name, "T#");
}

TEST_F(TrackTest, BadSectionsAndPointsAreLeftOutOfTheTrack)
{
    const double nan = std::nan("");
    CBuilder odd;
    odd.Add(4U).Add(32U).Point(50.1, -3.0, 1.6e9, 0.0F).Point(nan, 0.0, 1.0, 0.0F).Point(95.0, 0.0, 1.0, 0.0F);
    odd.Point(50.2, -3.0, nan, static_cast<float>(nan));
    const struct {
        const char* name;
        std::vector<CBuilder> sections;
        int points;
        bool whole;
    } cases[] = {
        {"none_bad", {SectionOf(3, 3), SectionOf(64, 64)}, 3 + 64, true},
        {"count_65", {SectionOf(3, 3), SectionOf(65, 65)}, 3, false},
        {"count_below_0", {SectionOf(0xFFFFFFFFU, 3), SectionOf(4, 4)}, 4, false},
        {"more_points_than_bytes", {SectionOf(3, 3), SectionOf(64, 10)}, 3, false},
        {"empty_sections", {SectionOf(0, 0), SectionOf(3, 3), SectionOf(0, 0)}, 3, true},
        {"points_that_are_no_positions", {SectionOf(3, 3), odd}, 5, true},
    };
    for (const auto& c : cases) {
        const CBuilder track = TrackRecord(c.name, c.sections).Section(SyncBlock(7, 1.65e9, false, 1.6e9)).Text("");
        WriteBytes(File(), CBuilder::File(CBuilder().Add(1U).Section(track)));
        g_track_manager.LoadFromFile();
        EXPECT_EQ(isRegularFile(File() + ".damaged"), !c.whole) << c.name;
        std::filesystem::remove(File() + ".damaged");
        ASSERT_EQ(g_track_manager.size(), 1U) << c.name;
        EXPECT_EQ(Track()->getTotalPoints(), c.points) << c.name;
        EXPECT_TRUE(IsConnected(*Track())) << c.name;
        EXPECT_TRUE(std::isfinite(Track()->getTotalDistance())) << c.name;
    }
}

TEST_F(TrackTest, TracksComeBackAsTheyWere)
{
    COverlayTrack* const track = MakeTrack("kept", 200);
    track->comment = "a \n comment";
    track->category = "A/B";
    track->line_style = 3;
    track->visible = false;
    MakeTrack("second", 3);
    g_track_manager.DefaultTrack().name = "Trip #";
    const auto points = PointsOf(*track);
    const std::uint64_t id = track->GetObjectID();
    ASSERT_TRUE(Restart());
    ASSERT_EQ(g_track_manager.size(), 2U);
    const COverlayTrack& read = *g_track_manager.front();
    EXPECT_EQ(PointsOf(read), points);
    EXPECT_TRUE(IsConnected(read));
    EXPECT_EQ(read.comment, "a \n comment");
    EXPECT_EQ(read.category, "A/B");
    EXPECT_EQ(read.line_style, 3);
    EXPECT_FALSE(read.visible);
    EXPECT_EQ(read.object_id, id);
    EXPECT_EQ(g_track_manager.DefaultName(), "Trip 1");
    EXPECT_FALSE(g_track_manager.tracks_modified);
}

/// Makes the sections of the file small for a while.
struct CRoom {
    explicit CRoom(std::size_t bytes) : usual(std::exchange(CTrackManager::most_bytes_in_section, bytes)) {}
    ~CRoom() { CTrackManager::most_bytes_in_section = usual; }
    const std::size_t usual;
};

TEST_F(TrackTest, TracksBeyondOneSectionOfTheFileComeBackAsWell)
{
    for (const std::size_t bytes : {std::size_t{1}, std::size_t{7000}, std::size_t{30'000}}) {
        const CRoom room(bytes);
        g_track_manager.ClearAll();
        std::vector<std::vector<CTrackPoint>> points;
        for (const int count : {3, 500, 3, 1000, 64}) points.push_back(PointsOf(*MakeTrack("track", count)));
        g_track_manager.DefaultTrack().name = "Trip #";
        COverlayTrack& longest = **std::next(g_track_manager.begin(), 3);
        const auto sections = longest.sections;
        ASSERT_TRUE(g_track_manager.SaveIfNeeded());
        EXPECT_EQ(longest.sections, sections);
        EXPECT_EQ(longest.object_id, 0U) << "saving gives nobody an id";
        ASSERT_TRUE(Restart(false));
        ASSERT_EQ(g_track_manager.size(), points.size());
        std::size_t i = 0;
        for (const COverlayTrack* track : g_track_manager) {
            EXPECT_EQ(PointsOf(*track), points[i++]);
            EXPECT_TRUE(IsConnected(*track));
        }
        EXPECT_EQ(g_track_manager.DefaultName(), "Trip 1");
    }
}

TEST_F(TrackTest, OnlyMarkedContinuationsGoOnWithAFile)
{
    constexpr std::uint32_t kMark = 0x5C0B7A1E;
    const auto record = [](std::uint64_t id, int points) {
        return TrackRecord("track", {SectionOf(3, points)}).Section(SyncBlock(id, 1.65e9, false, 1.6e9)).Text("");
    };
    const CBuilder usual = TrackRecord("T#", {}).Section(SyncBlock(0, 1.65e9, false, 1.6e9)).Text("");
    const auto list = [&](int tracks) {
        CBuilder content;
        content.Add(static_cast<std::uint32_t>(tracks));
        for (int i = 0; i < tracks; ++i) content.Section(record(7, 3));
        return content;
    };
    const auto first = [&](std::uint32_t continuations) {
        return list(2).Section(usual).Add(kMark).Add(continuations);
    };
    const auto more = [&](std::uint8_t same_track) {
        CBuilder content;
        content.Add(kMark).Add(same_track);
        content.bytes += list(1).bytes;
        return content;
    };
    const CBuilder foreign[] = {CBuilder(), CBuilder().Add(std::uint16_t{1}), list(5), CBuilder().Section(list(1))};
    std::string among_foreign = CBuilder::File(first(2));
    for (const CBuilder& section : foreign) among_foreign += CBuilder().Section(section).bytes;
    among_foreign += CBuilder().Section(more(1)).Section(foreign[2]).Section(more(0)).Section(more(0)).bytes;

    CBuilder unreadable = CBuilder().Add(1U).Section(CBuilder().Add(0xFFFFFFFFU)).Section(usual).Add(kMark).Add(1U);
    const struct {
        const char* name;
        std::string file;
        std::vector<int> points; ///< of each track
        bool whole;
    } cases[] = {
        {"neighbours_of_one_id_are_two", CBuilder::File(list(2).Section(usual)), {3, 3}, true},
        {"what_follows_unannounced_is_not_read",
         CBuilder::File(list(1)) + CBuilder().Section(more(0)).bytes,
         {3},
         true},
        {"a_field_of_a_newer_program_announces_nothing",
         CBuilder::File(list(1).Section(usual).Add(7U).Add(2U)) + CBuilder().Section(more(0)).bytes,
         {3},
         true},
        {"among_sections_of_a_newer_program", among_foreign, {3, 6, 3}, true},
        {"one_is_missing", CBuilder::File(first(2)) + CBuilder().Section(more(0)).bytes, {3, 3, 3}, false},
        {"what_it_goes_on_with_is_lost", CBuilder::File(unreadable) + CBuilder().Section(more(1)).bytes, {3}, false},
    };
    for (const auto& c : cases) {
        WriteBytes(File(), c.file);
        EXPECT_TRUE(g_track_manager.LoadFromFile()) << c.name;
        std::vector<int> points;
        for (const COverlayTrack* track : g_track_manager) points.push_back(track->getTotalPoints());
        EXPECT_EQ(points, c.points) << c.name;
        EXPECT_EQ(isRegularFile(File() + ".damaged"), !c.whole) << c.name;
        std::filesystem::remove(File() + ".damaged");
    }
}

TEST_F(TrackTest, TrivialTracksWithoutAnIdVanishWhenRead)
{
    MakeTrack("two", 2);
    MakeTrack("three", 3);
    MakeTrack("two with id", 2)->GetObjectID();
    MakeTrack(":chunk of a server", 100);
    Restart();
    std::vector<std::string> names;
    for (const COverlayTrack* track : g_track_manager) names.push_back(track->name);
    EXPECT_EQ(names, (std::vector<std::string>{"three", "two with id"}));
}

TEST_F(TrackTest, AFileCutAnywhereGivesWhatIsInIt)
{
    const CRoom room(2200); // a full section of a track, and a little
    MakeTrack("first", 100)->GetObjectID();
    MakeTrack("second", 70, 500.0)->GetObjectID();
    const auto first = PointsOf(*g_track_manager.front());
    const auto second = PointsOf(*g_track_manager.back());
    g_track_manager.SaveIfNeeded();
    const std::string whole = Bytes(File());
    std::size_t most = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        g_track_manager.ClearAll();
        g_track_manager.ReadMemory(std::string_view(whole).substr(0, size), 0x0A2089E8);
        std::size_t points = 0;
        for (const COverlayTrack* track : g_track_manager) {
            const auto read = PointsOf(*track);
            points += read.size();
            const auto& of = track == g_track_manager.front() ? first : second;
            ASSERT_LE(read.size(), of.size()) << size;
            EXPECT_TRUE(std::equal(read.begin(), read.end(), of.begin())) << size;
        }
        EXPECT_GE(points, most) << size;
        most = points;
    }
    EXPECT_EQ(most, first.size() + second.size());
}

TEST_F(TrackTest, ACutFileIsKeptAsItIs)
{
    MakeTrack("track", 100);
    g_track_manager.SaveIfNeeded();
    const std::string cut = Bytes(File()).substr(0, 3000);
    WriteBytes(File(), cut);
    Restart(false);
    EXPECT_EQ(Track()->getTotalPoints(), 64);
    EXPECT_TRUE(g_track_manager.SaveIfNeeded());
    EXPECT_EQ(Bytes(File()), cut) << "nothing has changed, nothing is written";
    g_track_manager.SetModified();
    EXPECT_TRUE(g_track_manager.SaveIfNeeded());
    EXPECT_NE(Bytes(File()), cut);
    EXPECT_EQ(Bytes(File() + ".damaged"), cut);
}

TEST_F(TrackTest, AFailedWritingIsTriedAgain)
{
    MakeTrack("track", 5);
    std::filesystem::create_directories(File()); // no file can be put there
    EXPECT_FALSE(g_track_manager.SaveIfNeeded());
    EXPECT_FALSE(g_track_manager.tracks_modified);
    EXPECT_FALSE(g_track_manager.SaveIfNeeded());
    std::filesystem::remove(File());
    EXPECT_TRUE(g_track_manager.SaveIfNeeded());
    const auto written = std::filesystem::last_write_time(File());
    EXPECT_TRUE(g_track_manager.SaveIfNeeded());
    EXPECT_EQ(std::filesystem::last_write_time(File()), written);
}

TEST_F(TrackTest, TombstonesStayAsLongAsAServerMayAsk)
{
    constexpr double kDay = 86400.0;
    constexpr struct {
        const char* name;
        bool has_id;
        double age;  // days
        double jump; // days that the clock goes on between two moments
        bool kept;
    } cases[] = {
        {"known_to_the_server", true, 13.9, 0.0, true},
        {"two_weeks_old", true, 14.1, 0.0, false},
        {"never_known", false, 0.0, 0.0, false},
        {"old_by_a_jump_of_the_clock", true, 1.0, 20.0, true},
        {"old_whatever_the_clock_did", true, 14.1, 0.9, false},
        {"never_known_whatever_the_clock_did", false, 0.0, 20.0, false},
    };
    for (const auto& c : cases) {
        SetNow(kStart);
        Restart();
        g_track_manager.ClearAll();
        COverlayTrack* const track = MakeTrack("deleted", 5);
        if (c.has_id) track->GetObjectID();
        g_track_manager.DeleteTrack(track);
        track->modified = kStart - c.age * kDay;
        SetNow(kStart + c.jump * kDay);
        g_track_manager.SaveIfNeeded();
        EXPECT_EQ(g_track_manager.size(), c.kept ? 1U : 0U) << c.name;
        SetNow(kStart);
        Restart(false);
        EXPECT_EQ(g_track_manager.size(), c.kept ? 1U : 0U) << c.name;
        EXPECT_EQ(Track(), nullptr) << c.name;
    }
}

} // namespace
