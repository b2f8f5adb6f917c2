#include "app/auto_save.h"
#include "chartview/view_settings.h"
#include "core/files.h"
#include "core/persistant_data.h"
#include "support/patience.h"
#include "support/temporary_root.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

constexpr int kNever_ms = 1000000;

class AutoSave : public testing::Test {
protected:
    void SetUp() override { PersistantData::LoadAll("zentara"); }
    void Change() const
    {
        TheViewSettings().show_scale_bar = !TheViewSettings().show_scale_bar;
        ViewSettingsChanged();
    }
    bool Saved() const { return isRegularFile(PersistantData::Filename()); }
    bool WaitUntilSaved() const
    {
        return QTest::qWaitFor([this] { return Saved(); }, kPatience_ms);
    }

    CTemporaryRoot root;
};

TEST_F(AutoSave, ChangedSettingIsOnTheDiskWithoutAnEnd)
{
    CAutoSave auto_save(1, kNever_ms);
    EXPECT_FALSE(Saved());
    Change();
    EXPECT_TRUE(WaitUntilSaved());
}

TEST_F(AutoSave, ChangesWithoutAPauseAreSavedAllTheSame)
{
    CAutoSave auto_save(kNever_ms, 1);
    Change();
    EXPECT_TRUE(WaitUntilSaved());
}

TEST_F(AutoSave, NothingIsWrittenBehindItsBack)
{
    {
        CAutoSave auto_save(1, 1);
    }
    Change();
    QCoreApplication::processEvents();
    EXPECT_FALSE(Saved());
}

} // namespace
