#include "mark_fixture.h"

#include "core/files.h"
#include "core/folders.h"

#include <cstring>
#include <filesystem>
#include <limits>

namespace {

/// Bytes of a typed file, put together by hand.
struct Bytes {
    std::string bytes;

    template <class T>
    Bytes& Put(T value)
    {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    Bytes& Text(const std::string& text)
    {
        Put(static_cast<std::uint32_t>(text.size()));
        bytes += text;
        return *this;
    }
    Bytes& Section(const Bytes& content)
    {
        Put(std::uint8_t{0xBE}).Put(static_cast<std::uint32_t>(content.bytes.size() + 5));
        bytes += content.bytes;
        return *this;
    }
    Bytes& Colour(float red, float green, float blue, float alpha) { return Put(red).Put(green).Put(blue).Put(alpha); }
};

constexpr std::uint32_t kSignature = 0x73ACF249;
constexpr std::uint32_t kMarksMagic = 0xCA2EAF82;
constexpr std::uint32_t kRoutesMagic = 0xDA2EAF93;

Bytes SyncBlock(std::uint64_t id, double modified, bool deleted, double created)
{
    return Bytes()
        .Put(id)
        .Put(std::uint8_t{0})
        .Put(modified)
        .Put(static_cast<std::uint8_t>(deleted))
        .Put(created)
        .Put(static_cast<std::uint8_t>(!deleted))
        .Put(std::uint8_t{0});
}

/// The fields of a mark before its sync block.
Bytes MarkFields(const std::string& name, double lat, double lon, bool is_target = false)
{
    return Bytes()
        .Text(name)
        .Put(lat)
        .Put(lon)
        .Put(1.7e9)
        .Text("https://example.org")
        .Text("comment")
        .Put(static_cast<std::uint8_t>(is_target))
        .Put(std::uint8_t{0})
        .Text("Anchor")
        .Colour(0.25F, 0.5F, 0.75F, 1.0F)
        .Put(5.0F)
        .Put(50.0F);
}

Bytes FreeMark(const Bytes& fields, std::uint64_t id = 7, double modified = 1.75e9, bool deleted = false)
{
    return Bytes(fields).Section(SyncBlock(id, modified, deleted, 1.7e9)).Text("folder/sub");
}

Bytes RouteFields(const std::string& name, const std::vector<Bytes>& waypoints, float width = 3.0F, int style = 1,
                  bool following = false)
{
    Bytes route;
    route.Text(name).Section(Bytes().Colour(0, 0, 0, 1).Put(width).Put(style));
    route.Put(static_cast<std::uint32_t>(waypoints.size()));
    for (const Bytes& waypoint : waypoints) route.Section(waypoint);
    return route.Text("of the route")
        .Put(static_cast<std::uint8_t>(following))
        .Section(SyncBlock(9, 1.75e9, false, 1.7e9))
        .Text("trips");
}

Bytes ListFile(std::uint32_t magic, const std::vector<Bytes>& records, const Bytes& tail = {})
{
    Bytes list;
    list.Put(static_cast<std::uint32_t>(records.size()));
    for (const Bytes& record : records) list.Section(record);
    list.bytes += tail.bytes;
    return Bytes().Put(kSignature).Section(Bytes().Put(magic)).Section(list);
}

class MarkFiles : public CMarksTest {
protected:
    std::string marks_path = getAppDirectory("marks.zttf");
    std::string routes_path = getAppDirectory("routes.zttf");

    void WriteMarks(const Bytes& file) { ASSERT_TRUE(write_to_file(marks_path, file.bytes)); }
    void WriteRoutes(const Bytes& file) { ASSERT_TRUE(write_to_file(routes_path, file.bytes)); }
    static std::string Content(const std::string& path)
    {
        std::string content;
        return read_whole_file(path, content) ? content : "(none)";
    }
    std::string MarkNames() const
    {
        std::string names;
        for (const COverlayMark* mark : manager.marks) names += mark->name + " ";
        return names;
    }
    void SaveAll()
    {
        manager.marks_modified = manager.routes_modified = true;
        ASSERT_TRUE(manager.SaveIfNeeded());
    }
};

TEST_F(MarkFiles, AreWrittenByteForByteAsTheyWereRead)
{
    const Bytes default_mark = FreeMark(MarkFields("M#", 999, 999), 0, 1.7e9);
    const Bytes waypoint = Bytes(MarkFields("a", 50, 1)).Text("");
    const Bytes default_route = RouteFields("Trip #", {Bytes(MarkFields("%R-#", 999, 999)).Text("")});
    const Bytes marks = ListFile(
        kMarksMagic, {FreeMark(MarkFields("Pier", 50, -1)), FreeMark(MarkFields("", 999, 999), 8, kStart, true)},
        Bytes().Section(default_mark));
    const Bytes routes =
        ListFile(kRoutesMagic, {RouteFields("R1", {waypoint, waypoint})}, Bytes().Section(default_route));
    WriteMarks(marks);
    WriteRoutes(routes);
    ASSERT_TRUE(manager.LoadFromFile());
    EXPECT_FALSE(manager.marks_modified || manager.routes_modified);

    const COverlayMark& mark = *manager.marks.front();
    EXPECT_EQ(mark.name + mark.link + mark.comment + mark.icon_name + mark.category,
              "Pierhttps://example.orgcommentAnchorfolder/sub");
    EXPECT_EQ(mark.alarm_radius, 50.0F);
    EXPECT_EQ(mark.object_id, 7U);
    EXPECT_FALSE(manager.marks.back()->visible) << "a tombstone";
    EXPECT_EQ(manager.DefaultMark().name, "M#");
    EXPECT_EQ(manager.DefaultMark().alarm_radius, 50.0F);
    const COverlayRoute& route = *manager.routes.front();
    EXPECT_EQ(NamesOf(route), "aa");
    EXPECT_EQ(route.line_width, 3.0F);
    EXPECT_EQ(route.created, 1.7e9);
    EXPECT_EQ(manager.DefaultWaypoint().name, "%R-#");
    EXPECT_EQ(manager.DefaultRoute().line_style, 1);

    SaveAll();
    const auto list_of = [](const std::string& file) { return file.substr(0, file.rfind("Trip #")); };
    EXPECT_EQ(list_of(Content(routes_path)), list_of(routes.bytes));
    const auto head_of = [](const std::string& file) { return file.substr(0, file.rfind("M#")); };
    EXPECT_EQ(head_of(Content(marks_path)), head_of(marks.bytes));
    EXPECT_EQ(Content(marks_path).size(), marks.bytes.size());
    EXPECT_EQ(Content(routes_path).size(), routes.bytes.size());
    EXPECT_FALSE(isRegularFile(marks_path + ".damaged"));
}

TEST_F(MarkFiles, OfOlderProgramsLackTheLaterFields)
{
    WriteMarks(ListFile(kMarksMagic, {MarkFields("Old", 50, -1), Bytes().Text("Oldest").Put(51.0).Put(2.0)}));
    WriteRoutes(ListFile(kRoutesMagic, {}));
    ASSERT_TRUE(manager.LoadFromFile());
    EXPECT_EQ(MarkNames(), "Old Oldest ");
    EXPECT_EQ(manager.marks.front()->created, 1.7e9);
    EXPECT_EQ(manager.marks.front()->modified, kStart);
    EXPECT_TRUE(manager.marks.front()->visible);
    EXPECT_EQ(manager.marks.back()->icon_name, "Flag");
    EXPECT_EQ(manager.DefaultMark().name, "P#");
}

/// How many of the records lie whole in the first `size` bytes of a file of them.
std::size_t WholeRecords(const std::vector<Bytes>& records, std::size_t size)
{
    std::size_t whole = 0;
    std::size_t end = 4 + 9 + 5 + 4; // the signature, the magic, the head of the section and the count
    while (whole < records.size() && (end += records[whole].bytes.size() + 5) <= size) ++whole;
    return whole;
}

TEST_F(MarkFiles, CutOffAnywhereGiveWhatIsWholeAndAreKept)
{
    const std::vector<Bytes> marks = {FreeMark(MarkFields("one", 50, 1)), FreeMark(MarkFields("two", 50, 2)),
                                      FreeMark(MarkFields("three", 50, 3))};
    const Bytes waypoint = Bytes(MarkFields("a", 50, 1)).Text("");
    const std::vector<Bytes> routes = {RouteFields("R1", {waypoint}), RouteFields("R2", {waypoint, waypoint})};
    const std::string mark_file =
        ListFile(kMarksMagic, marks, Bytes().Section(FreeMark(MarkFields("M#", 999, 999)))).bytes;
    const std::string route_file = ListFile(kRoutesMagic, routes, Bytes().Section(RouteFields("T#", {waypoint}))).bytes;
    const struct {
        const std::string& file;
        const std::vector<Bytes>& records;
        CSerializable& reader;
        std::uint32_t magic;
        const std::string& path;
    } cases[] = {{mark_file, marks, manager.MarksFile(), kMarksMagic, marks_path},
                 {route_file, routes, manager.RoutesFile(), kRoutesMagic, routes_path}};
    for (const auto& c : cases) {
        for (std::size_t size = 1; size < c.file.size(); ++size) {
            manager.ClearAll();
            EXPECT_FALSE(c.reader.ReadMemory(c.file.substr(0, size), static_cast<int>(c.magic)));
            manager.FilesRead();
            ASSERT_EQ(manager.marks.size() + manager.routes.size(), WholeRecords(c.records, size)) << c.path << size;
            ASSERT_EQ(manager.DefaultMark().name + manager.DefaultRoute().name, "P#R#") << c.path << size;
        }
        for (const std::size_t size : {std::size_t{3}, std::size_t{17}, c.file.size() / 2, c.file.size() - 1}) {
            manager.ClearAll();
            const std::string cut = c.file.substr(0, size);
            ASSERT_TRUE(write_to_file(c.path, cut));
            EXPECT_FALSE(manager.LoadFromFile());
            EXPECT_EQ(manager.marks.size() + manager.routes.size(), WholeRecords(c.records, size));
            SaveAll();
            EXPECT_EQ(Content(c.path + ".damaged"), cut) << c.path << size;
        }
        std::filesystem::remove(c.path);
    }
}

TEST_F(MarkFiles, WithNonsenseGiveWhatCanBeUsed)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    Bytes bad_record;
    bad_record.Text("x").Put(50.0).Put(1.0).Put(1.7e9).Put(std::uint32_t{0xFFFFFFFF}); // a text longer than the file
    Bytes bad_radii = MarkFields("radii", 50, 1);
    bad_radii.bytes.resize(bad_radii.bytes.size() - 8);
    bad_radii.Put(-3.0F).Put(std::numeric_limits<float>::infinity());
    WriteMarks(ListFile(kMarksMagic, {FreeMark(MarkFields("nan", kNan, 1)), bad_record, FreeMark(bad_radii)}));
    const Bytes waypoint = Bytes(MarkFields("a", 50, 1)).Text("");
    const Bytes far = Bytes(MarkFields("far", 5000, 1)).Text("");
    WriteRoutes(ListFile(kRoutesMagic, {RouteFields("R", {waypoint, far, waypoint}, -1.0F, 77)}));
    manager.LoadFromFile();
    EXPECT_EQ(MarkNames(), "nan radii ") << "one bad record does not lose the next";
    EXPECT_FALSE(manager.marks.front()->HasPosition());
    EXPECT_EQ(manager.marks.back()->anchor_radius, 0.0F);
    EXPECT_EQ(manager.marks.back()->alarm_radius, 0.0F);
    EXPECT_TRUE(isRegularFile(marks_path + ".damaged"));
    COverlayRoute& route = *manager.routes.front();
    EXPECT_EQ(route.line_width, 2.0F);
    EXPECT_EQ(route.line_style, 0);
    EXPECT_EQ(route.getTotalLengthMeters(), 0.0) << "a waypoint without a position is left out";
    EXPECT_EQ(route.InitSegments(), 0);
    Fix(50.0, 1.0);
}

TEST_F(MarkFiles, OfAnotherKindAreNotTouched)
{
    AddMark("Here", 50, 1);
    const std::string other = ListFile(kRoutesMagic, {}).bytes;
    ASSERT_TRUE(write_to_file(marks_path, other));
    EXPECT_FALSE(manager.LoadFromFile());
    EXPECT_EQ(MarkNames(), "Here ");
    SaveAll();
    EXPECT_EQ(Content(marks_path + ".damaged"), other);
    ASSERT_TRUE(manager.LoadFromFile());
    EXPECT_EQ(MarkNames(), "Here ");
}

TEST_F(MarkFiles, ThatCannotBeWrittenAreTriedAgain)
{
    std::filesystem::create_directories(marks_path);
    AddMark("Pier", 50, 1);
    EXPECT_FALSE(manager.SaveIfNeeded());
    EXPECT_TRUE(manager.marks_modified);
    std::filesystem::remove(marks_path);
    EXPECT_TRUE(manager.SaveIfNeeded());
    EXPECT_FALSE(manager.marks_modified);
    manager.ClearAll();
    manager.LoadFromFile();
    EXPECT_EQ(MarkNames(), "Pier ");
}

TEST_F(MarkFiles, ForgetTombstonesInTime)
{
    const struct {
        const char* what;
        double age;  ///< days
        bool known;  ///< to the server
        double jump; ///< days that the clock goes on at once
        bool kept;
    } cases[] = {
        {"fresh", 0, true, 0, true},
        {"nearly due", 13.9, true, 0, true},
        {"due", 14.1, true, 0, false},
        {"unknown to the server", 0, false, 0, false},
        {"the clock has jumped", 1, true, 30, true},
        {"the clock has jumped back", 1, true, -30, true},
        {"unknown, and the clock has jumped", 1, false, 30, false},
    };
    for (const auto& c : cases) {
        manager.ClearAll();
        SetNow(kStart);
        SaveAll();
        ASSERT_TRUE(manager.LoadFromFile());
        COverlayMark& mark = AddMark("Pier", 50, 1);
        COverlayRoute& route = AddRoute("R", {{1, 1}, {2, 2}});
        if (c.known) mark.GetObjectID();
        if (c.known) route.GetObjectID();
        manager.DeleteMark(&mark);
        manager.DeleteRoute(&route);
        mark.modified = route.modified = kStart - c.age * kDay;
        SetNow(kStart + c.jump * kDay);
        SaveAll();
        EXPECT_EQ(manager.marks.size(), c.kept ? 1U : 0U) << c.what;
        EXPECT_EQ(manager.routes.size(), c.kept ? 1U : 0U) << c.what;
    }
}

TEST_F(MarkFiles, TakeTheNavigationUpAgain)
{
    const Bytes target = FreeMark(MarkFields("Target", 50, 1, true));
    const Bytes deleted_target = FreeMark(MarkFields("", 999, 999, true), 7, kStart, true);
    const Bytes plain = Bytes(MarkFields("a", 50, 1)).Text("");
    const Bytes waypoint_target = Bytes(MarkFields("b", 50, 2, true)).Text("");
    Bytes broken = RouteFields("broken", {waypoint_target});
    broken.bytes.resize(broken.bytes.size() - 30);
    const struct {
        const char* what;
        std::vector<Bytes> marks, routes;
        const char* target;
        const char* followed;
    } cases[] = {
        {"none", {FreeMark(MarkFields("x", 50, 1))}, {}, "", ""},
        {"mark", {target}, {}, "Target", ""},
        {"deleted mark", {deleted_target}, {}, "", ""},
        {"waypoint", {}, {RouteFields("R", {plain, waypoint_target})}, "b", ""},
        {"route before mark", {target}, {RouteFields("R", {plain, plain}, 2, 0, true)}, "", "R"},
        {"one that does not read", {}, {broken, RouteFields("R", {plain})}, "", ""},
    };
    for (const auto& c : cases) {
        WriteMarks(ListFile(kMarksMagic, c.marks));
        WriteRoutes(ListFile(kRoutesMagic, c.routes));
        manager.LoadFromFile();
        const CDataGotoMark& n = manager.navigation;
        EXPECT_EQ(n.target != nullptr ? n.target->name : "", c.target) << c.what;
        EXPECT_EQ(n.route != nullptr ? n.route->name : "", c.followed) << c.what;
        EXPECT_FALSE(manager.marks_modified || manager.routes_modified) << c.what;
        for (const COverlayMark* mark : manager.marks) EXPECT_EQ(mark->goto_target, n.target == mark) << c.what;
    }
}

TEST_F(MarkFiles, ReceivedRecordsReplaceAnObject)
{
    COverlayMark& mark = AddMark("Here", 10, 10);
    manager.SetGoto(&mark);
    const auto receive = [](CSyncable& object, const Bytes& record) {
        const std::string bytes = Bytes().Put(kSignature).Section(record).bytes;
        CSerializable::InStream stream;
        return stream.OpenMemory(bytes) && object.SyncObject(stream, 0.0);
    };
    ASSERT_TRUE(receive(mark, FreeMark(MarkFields("There", 50, 1))));
    EXPECT_EQ(mark.name, "There");
    EXPECT_TRUE(mark.goto_target && mark.isNavigatingToMark()) << "the boat goes on to it";
    COverlayRoute& route = AddRoute("R", {{1, 1}, {2, 2}});
    const Bytes waypoint = Bytes(MarkFields("n", 50, 1)).Text("");
    ASSERT_TRUE(receive(route, RouteFields("R2", {waypoint, waypoint, waypoint}, 2, 0, true)));
    EXPECT_EQ(NamesOf(route), "nnn");
    EXPECT_EQ(manager.navigation.route, &route);
    EXPECT_FALSE(mark.goto_target);
}

TEST_F(MarkFiles, SettingsHoldTheLookOfTheTemplates)
{
    CAttributes map;
    map.Set("CMarkManager:default_mark_icon", "../../etc/buoy can");
    map.Set("CMarkManager:default_wp_color2", "#FF00FF00");
    map.Set("CMarkManager:auto_reverse", "1");
    map.Set("CMarkManager:notifications", "0");
    manager.DefaultMark().name = "old";
    PersistantData::LoadFrom(map);
    EXPECT_EQ(manager.DefaultMark().icon_name, "Etcbuoy_can");
    EXPECT_EQ(manager.DefaultWaypoint().colour, GraphicsColor(0.0F, 1.0F, 0.0F));
    EXPECT_TRUE(CDataGotoMark::auto_reverse);
    EXPECT_FALSE(CMarkManager::enable_alarm_notifications);
    EXPECT_EQ(manager.DefaultMark().name + manager.DefaultRoute().name + manager.DefaultWaypoint().name, "P#R#%RP#");
}

} // namespace
