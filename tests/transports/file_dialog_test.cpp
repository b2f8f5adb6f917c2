#include "dialog_test.h"

#include "core/files.h"
#include "ui/file_dialogs.h"

#include <optional>

#include <QDir>

namespace {

/// The dialog of files, pressed as a user does, over folders of the test's.
class FileDialogs : public CDialogTest {
protected:
    void SetUp() override
    {
        CDialogTest::SetUp();
        qputenv("HOME", root.path().c_str());
        for (const char* name : {"voyage2.txt", "voyage10.TXT", "picture.png", ".hidden.txt", "logs/old.txt"}) {
            write_to_file(root.file(std::string("Documents/") + name), "x");
        }
        // What one test chose must not be where the next begins.
        CDlgQMLFileDialog::ForgetLastFolder();
    }
    void TearDown() override
    {
        qputenv("HOME", home);
        CDialogTest::TearDown();
    }
    void Import()
    {
        answers = 0;
        ImportFile({}, "Simulation File", "text/plain", "txt", Keep());
        ASSERT_TRUE(WaitOpened());
    }
    void Export(const char* name)
    {
        answers = 0;
        ExportFileAs({}, "Save As", "text/plain", "txt", name, Keep());
        ASSERT_TRUE(WaitOpened());
    }
    QStringList Entries() const { return Find("entries")->property("model").toStringList(); }
    std::string Text(const char* object_name) const
    {
        const QQuickItem* item = Find(object_name);
        return item != nullptr ? item->property("text").toString().toStdString() : "(none)";
    }
    std::string Document(const char* name) const { return root.file(std::string("Documents/") + name); }

    const QByteArray home = qgetenv("HOME");
    std::optional<std::string> answer;
    int answers = 0;

private:
    FileChosen Keep()
    {
        return [this](const std::optional<std::string>& path) {
            ++answers;
            answer = path;
        };
    }
};

TEST_F(FileDialogs, AFileOfTheKindAskedFor)
{
    Import();
    ExpectUsable({"up", "entry logs", "entry voyage2.txt", "allFiles", "acceptButton", "rejectButton"});
    EXPECT_EQ(Entries(), (QStringList{"logs", "voyage2.txt", "voyage10.TXT"}));
    EXPECT_EQ(Text("folder"), root.file("Documents"));
    EXPECT_EQ(Find("name"), nullptr);
    Click("acceptButton");
    EXPECT_EQ(Text("problem"), "Choose a file");
    Click("allFiles");
    EXPECT_EQ(Entries(), (QStringList{"logs", "picture.png", "voyage2.txt", "voyage10.TXT"}));
    Click("entry logs");
    EXPECT_EQ(Entries(), QStringList{"old.txt"});
    Click("entry old.txt");
    Click("acceptButton");
    EXPECT_EQ(answer, Document("logs/old.txt"));
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(answers, 1);

    Import();
    EXPECT_EQ(Text("folder"), Document("logs")) << "the next one begins there";
    Click("up");
    EXPECT_EQ(Text("folder"), root.file("Documents"));
    Click("entry voyage2.txt");
    Click("entry logs");
    Click("acceptButton");
    EXPECT_EQ(Text("problem"), "Choose a file") << "what was chosen in another folder does not count";
    Click("rejectButton");
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(answer, std::nullopt);
    EXPECT_EQ(answers, 1);
}

TEST_F(FileDialogs, ByTheKeysAlone)
{
    Import();
    Key(Qt::Key_Return); // into the first folder
    EXPECT_EQ(Text("folder"), Document("logs"));
    Key(Qt::Key_Backspace);
    EXPECT_EQ(Text("folder"), root.file("Documents"));
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    Key(Qt::Key_Space);
    for (int i = 0; i < 10 && ui->window->activeFocusItem() != Find("acceptButton"); ++i) Key(Qt::Key_Tab);
    Key(Qt::Key_Return);
    EXPECT_EQ(answer, Document("voyage10.TXT"));
    EXPECT_TRUE(WaitClosed());
    Export("x.txt");
    Key(Qt::Key_Escape);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(answer, std::nullopt);
    EXPECT_EQ(answers, 1);
    Export("y.txt");
    Key(Qt::Key_Return); // takes the name that is proposed
    EXPECT_EQ(answer, Document("y.txt"));
    EXPECT_TRUE(WaitClosed());
}

TEST_F(FileDialogs, NamesToSaveUnder)
{
    createPath(Document("folder.txt"));
    struct Case {
        const char* name;
        const char* problem;
        const char* saved;
    };
    const Case cases[] = {
        {"", "The name is missing", nullptr},
        {"  ", "The name is missing", nullptr},
        {"../up", "This is not a name", nullptr},
        {"..", "This is not a name", nullptr},
        {"folder", "A folder has this name", nullptr},
        {" new ", "(none)", "new.txt"},
        {"new.log", "(none)", "new.log"},
    };
    for (const Case& test : cases) {
        Export("proposed.txt");
        EXPECT_EQ(Text("name"), "proposed.txt");
        Type("name", test.name);
        Key(Qt::Key_Return);
        if (test.saved == nullptr) {
            EXPECT_EQ(Text("problem"), test.problem) << test.name;
            Click("rejectButton");
        } else {
            EXPECT_EQ(answer, Document(test.saved)) << test.name;
        }
        EXPECT_TRUE(WaitClosed());
        EXPECT_EQ(answers, 1);
    }
}

TEST_F(FileDialogs, BeforeAFileIsReplacedTheUserIsAsked)
{
    Export("voyage2");
    for (const char* button : {"button1", "button0"}) {
        Click("acceptButton");
        ASSERT_TRUE(WaitFor([&] { return Find("message") != nullptr; }));
        EXPECT_EQ(Text("message"), "\"voyage2.txt\" exists. Replace it?");
        EXPECT_EQ(answers, 0);
        ASSERT_TRUE(WaitOpened());
        Click(button);
        EXPECT_TRUE(WaitFor([&] { return Find("message") == nullptr; }));
    }
    EXPECT_EQ(answer, Document("voyage2.txt"));
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(answers, 1);
}

} // namespace
