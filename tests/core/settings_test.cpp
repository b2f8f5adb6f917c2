#include "core/persistant_data.h"

#include "core/files.h"
#include "core/folders.h"
#include "core/global_settings_type.h"
#include "core/user_data_changed.h"
#include "support/temporary_root.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

struct CValues {
    int number = 5;
    bool flag = true;
    std::string text = "default";
    GraphicsColor color{1.0F, 0.0F, 0.0F};
    float real = 1.5F;
    double precise = 2.5;
    double bearing_degrees = 10.0;
    std::array<unsigned char, 3> bytes{1, 2, 3};
    std::list<std::string> list{"first"};
    std::set<std::string> set{"b", "a"};
    friend bool operator==(const CValues&, const CValues&) = default;
};

class CGroup : public PersistantData {
public:
    explicit CGroup(const char* name) : PersistantData(name) {}
    CValues values;
    void DeclareData() override
    {
        Declare("number", values.number);
        Declare("flag", values.flag);
        Declare("text", values.text);
        Declare("color", values.color);
        Declare("real", values.real);
        Declare("precise", values.precise);
        Declare("bearing_degrees", values.bearing_degrees);
        Declare("bytes", values.bytes.data(), static_cast<int>(values.bytes.size()));
        Declare("list", values.list);
        Declare("set", values.set);
    }
};

CValues Loaded(const std::string& file)
{
    CGroup group("CTest");
    EXPECT_TRUE(write_to_file(getAppDirectory("app.ini"), file));
    PersistantData::LoadAll("app");
    return group.values;
}

std::string SettingsBytes()
{
    std::string bytes;
    read_whole_file(getAppDirectory("app.ini"), bytes);
    return bytes;
}

} // namespace

TEST(Settings, RoundTrip)
{
    const CTemporaryRoot root;
    CValues changed;
    changed.number = -1;
    changed.flag = false;
    changed.text = "a=b & c\n";
    changed.color = GraphicsColor(0.0F, 1.0F, 0.0F, 0.0F);
    changed.real = 0.1F;
    changed.precise = 1e300;
    changed.bytes = {0, 255, 7};
    changed.list = {"x", "", "y"};
    changed.set = {};
    {
        CGroup group("CTest");
        PersistantData::LoadAll("app");
        EXPECT_EQ(group.values, CValues());
        group.values = changed;
        group.SetModified();
        EXPECT_TRUE(PersistantData::SaveAll());
        EXPECT_FALSE(group.modified);
    }
    CGroup group("CTest");
    PersistantData::LoadAll("app");
    EXPECT_EQ(group.values, changed);
    group.values.list = {"z"};
    group.SetModified();
    EXPECT_TRUE(PersistantData::SaveAll());
    EXPECT_EQ(SettingsBytes().find("list[2]"), std::string::npos) << "what is no longer in the list";
}

TEST(Settings, WhatAFileMayHold)
{
    const CTemporaryRoot root;
    struct CCase {
        const char* name;
        const char* line;
        std::function<void(CValues&)> expected;
    };
    const CCase cases[] = {
        {"a bit pattern", "number=0xffffffff", [](CValues& v) { v.number = -1; }},
        {"no number", "number=many", [](CValues&) {}},
        {"T is no number", "flag=T", [](CValues& v) { v.flag = false; }},
        {"a point makes a decimal number", "real=1.25", [](CValues& v) { v.real = 1.25F; }},
        {"without a point raw bytes", "real=0000c03f", [](CValues& v) { v.real = 1.5F; }},
        {"raw bytes that are no number", "real=0000c07f", [](CValues&) {}},
        {"raw infinity", "precise=000000000000f07f", [](CValues&) {}},
        {"decimal infinity", "precise=1.e999", [](CValues&) {}},
        {"too large for a float", "real=1.0e300", [](CValues&) {}},
        {"not finite by name", "precise=nan.", [](CValues&) {}},
        {"an empty value", "text=", [](CValues&) {}},
        {"a colour without its mark", "color=FF00FF00", [](CValues&) {}},
        {"a list longer than the file", "list:n=2000000000", [](CValues& v) { v.list = {""}; }},
        {"a negative list", "list:n=-5", [](CValues& v) { v.list = {}; }},
        {"an empty set", "set:n=0", [](CValues& v) { v.set = {}; }},
    };
    for (const CCase& c : cases) {
        CValues expected;
        c.expected(expected);
        EXPECT_EQ(Loaded(std::string("CTest:") + c.line + "\n"), expected) << c.name;
    }
}

TEST(Settings, OnlyChangedGroupsAreWrittenAndAllElseStays)
{
    const CTemporaryRoot root;
    CGroup changed("CChanged");
    CGroup untouched("CUntouched");
    ASSERT_TRUE(write_to_file(getAppDirectory("app.ini"), "CFuture:key=kept\nCUntouched:number=0x7\n"));
    PersistantData::LoadAll("app");
    untouched.values.number = 99;
    changed.SetModified();
    ASSERT_TRUE(PersistantData::SaveAll());
    CAttributes map;
    ASSERT_TRUE(map.AddFile(getAppDirectory("app.ini")));
    EXPECT_EQ(map.Get("CFuture:key"), "kept");
    EXPECT_EQ(map.Get("CUntouched:number"), "0x7");
    EXPECT_EQ(map.Get("CChanged:number"), "0x5");
    changed.values.precise = std::nan("");
    changed.SetModified();
    ASSERT_TRUE(PersistantData::SaveAll());
    EXPECT_NE(SettingsBytes().find("CChanged:precise=0000000000000440"), std::string::npos)
        << "a number that is not finite leaves the old one";
}

TEST(Settings, DocumentsFolderOverridesKeyByKey)
{
    const CTemporaryRoot root;
    ASSERT_TRUE(write_to_file(getDocsDirectory("app.ini"), "CTest:number=8\n"));
    const CValues values = Loaded("CTest:number=7\nCTest:text=own\n");
    EXPECT_EQ(values.number, 8);
    EXPECT_EQ(values.text, "own");
}

TEST(Settings, TheSortGroupUnderItsLongName)
{
    const CTemporaryRoot root;
    CGroup group("CSortedPointer");
    ASSERT_TRUE(write_to_file(getAppDirectory("app.ini"),
                              "CChartOutline::CSortedPointer:number=3\nCChartOutline::CSortedPointer:text=long\n"
                              "CSortedPointer:text=short\n"));
    PersistantData::LoadAll("app");
    EXPECT_EQ(group.values.number, 3);
    EXPECT_EQ(group.values.text, "short");
}

TEST(Settings, AnUnreadableFileIsNotReplaced)
{
    const CTemporaryRoot root;
    ASSERT_TRUE(createPath(getAppDirectory("app.ini")));
    CGroup group("CTest");
    PersistantData::LoadAll("app");
    group.SetModified();
    EXPECT_FALSE(PersistantData::SaveAll());
    EXPECT_TRUE(group.modified);
    EXPECT_TRUE(isDirectory(getAppDirectory("app.ini")));
}

TEST(Settings, ADamagedFileGivesDefaultsAndIsKeptAside)
{
    const CTemporaryRoot root;
    std::string noise;
    for (unsigned i = 0, x = 1; i < 5000; ++i) noise += static_cast<char>((x = x * 1664525U + 1013904223U) >> 24);
    for (const std::string& bytes : {noise, std::string(300, '\0')}) {
        EXPECT_EQ(Loaded(bytes), CValues());
        std::string copy;
        EXPECT_TRUE(read_whole_file(getAppDirectory("app.ini.damaged"), copy));
        EXPECT_EQ(copy, bytes);
    }
    EXPECT_EQ(Loaded("CTest:text=caf\xC3\xA9\r\n").text, "caf\xC3\xA9");
}

TEST(Settings, OneValueByItsKey)
{
    const CTemporaryRoot root;
    CGroup shorter("CTest");
    CGroup longer("CTestMore");
    int changes = 0;
    SetUserDataChangedCallback([&] { ++changes; });
    std::string out;
    EXPECT_TRUE(PersistantData::GetValue("CTestMore:number", out));
    EXPECT_EQ(out, "0x5");
    EXPECT_TRUE(PersistantData::SetValue("CTestMore:number", "0x8"));
    EXPECT_EQ(longer.values.number, 8);
    EXPECT_EQ(shorter.values.number, 5);
    EXPECT_TRUE(longer.modified);
    EXPECT_FALSE(shorter.modified);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(PersistantData::GetValue("CTest:none", out));
    EXPECT_FALSE(PersistantData::SetValue("CNone:number", "1"));
    SetUserDataChangedCallback({});
}

TEST(SettingsMenu, SortedByOrder)
{
    class CEntry : public CGlobalSettingsType {
    public:
        using CGlobalSettingsType::CGlobalSettingsType;
        void addMenu(CMenuTree*, const std::string&) override {}
        void showDialog(ZT_HWND) override {}
    };
    const CEntry about("About", 10);
    const CEntry map("Map Settings", 1);
    const CEntry newer("Newer", 10);
    const CEntry units("Units", 6);
    std::vector<std::string> names;
    for (const auto* entry = CGlobalSettingsType::First(); entry != nullptr; entry = entry->Next())
        names.push_back(entry->name);
    EXPECT_EQ(names, (std::vector<std::string>{"Map Settings", "Units", "Newer", "About"}));
}
