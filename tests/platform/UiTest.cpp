// What every dialog stands on: ids, keys, texts in two languages, prompts, and a life without exec.

#include "platform/ui/ModelessDialog.h"
#include "platform/ui/PropertyPage.h"
#include "platform/ui/PropertySheet.h"
#include "tests/support/DialogFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <new>
#include <stdexcept>

namespace ta::test {
namespace {

/// A dialog with one control of each kind; what its handlers do is the test's.
template <class Base>
class FormOf : public Base {
public:
    template <class... Arguments>
    explicit FormOf(Arguments... arguments) : Base(arguments...) {
        auto* layout = new QVBoxLayout(this);
        for (QWidget* child : std::initializer_list<QWidget*>{&edit, &spin, &label, &combo, &table,
                                                              &tool, &button, &ok, &cancel}) {
            layout->addWidget(child);
        }
        this->setWindowTitle("IDS_TITLE");
        label.setText("IDS_LABEL");
        label.setToolTip("own text");
        edit.setText("IDS_LABEL");
        edit.setPlaceholderText("IDS_HINT");
        spin.setSuffix("IDS_SUFFIX");
        combo.addItems({"IDS_ENTRY", "IDS_OTHER"});
        table.setHorizontalHeaderLabels({"IDS_HEAD", ""});
        this->Handle(&edit, &QLineEdit::textEdited, [this](const QString& text) { onText(text); });
        this->Handle(&tool, &QToolButton::clicked, [this] { log.append("tool"); });
        this->Handle(&button, &QPushButton::clicked, [this](bool) { log.append("button"); });
    }

    using Base::AddTextEntry;
    using Base::Ask;
    using Base::Refuse;
    using Base::SetHeadKey;
    using Base::SetTextKey;

    std::function<void(const QString&)> onText = [](const QString&) {};
    std::function<void()> onInit = [] {};
    std::function<void()> onOk = [] {};
    QStringList log;
    QLineEdit edit;
    QSpinBox spin;
    QLabel label;
    QComboBox combo;
    QTableWidget table{0, 2};
    QToolButton tool;
    QPushButton button;
    QPushButton ok;
    QPushButton cancel;

protected:
    bool OnInitDialog() override {
        onInit();
        return Base::OnInitDialog();
    }
};

class Form : public FormOf<ui::DialogBase> {
public:
    explicit Form(QWidget* parent = nullptr) : FormOf(parent) { SetButtons(ok, cancel); }
    using DialogBase::PostClose;

    int number = 1;

protected:
    void vLoadLanguageString() override {
        LoadLanguageStrings();
        button.setText(ui::LangText("IDS_FORMATTED", QString::number(number)));
    }
    void OnOK() override {
        log.append("ok");
        onOk();
        DialogBase::OnOK();
    }
};

using UiTest = DialogFixture;

TEST_F(UiTest, HowTheModalLoopEnds) {
    const auto run = [](const std::function<void(Form&)>& user) {
        Form dialog;
        QTimer::singleShot(0, &dialog, [&] { user(dialog); });
        return dialog.DoModal();
    };
    EXPECT_EQ(run([](Form& form) { QTest::keyClick(&form.edit, Qt::Key_Enter); }), ui::kIdOk);
    EXPECT_EQ(run([](Form& form) { QTest::keyClick(&form.edit, Qt::Key_Escape); }), ui::kIdCancel);
    EXPECT_EQ(run([](Form& form) { form.close(); }), ui::kIdCancel);
    Form closing;
    closing.onInit = [&] { closing.PostClose(); };
    EXPECT_EQ(closing.DoModal(), ui::kIdCancel);
}

TEST_F(UiTest, EnterPressesTheButtonWithTheFocusAndElseOk) {
    Form form;
    Show(form);
    const auto enter = [&](QWidget& focus) {
        focus.setFocus();
        Press(form, Qt::Key_Return);
        const QString pressed = form.isVisible() ? form.log.join(' ') : form.log.join(' ') + '!';
        form.log.clear();
        Show(form);
        return pressed;
    };
    form.onOk = [] {};
    EXPECT_EQ(enter(form.button), "button");
    EXPECT_EQ(enter(form.tool), "tool");
    EXPECT_EQ(enter(form.cancel), "!");
    EXPECT_EQ(enter(form.spin), "ok!");
    EXPECT_EQ(enter(form.ok), "ok!");
    // The frame of the default button goes along.
    const auto defaults = [&](QWidget& focus) {
        focus.setFocus();
        return QString("%1%2%3")
            .arg(form.ok.isDefault())
            .arg(form.cancel.isDefault())
            .arg(form.button.isDefault());
    };
    EXPECT_EQ(defaults(form.edit), "100");
    EXPECT_EQ(defaults(form.cancel), "010");
    EXPECT_EQ(defaults(form.button), "001");
    EXPECT_EQ(defaults(form.tool), "100");
    // Controls go while one of them has the focus and the default button is another one.
    auto* frame = new QWidget(&form);
    new QLineEdit(frame);
    auto* last = new QPushButton(frame);
    frame->show();
    EXPECT_EQ(defaults(*last), "000");
    delete frame;
    EXPECT_EQ(defaults(form.edit), "100");
}

TEST_F(UiTest, NoExceptionLeavesADialog) {
    Form form;
    form.show();
    form.onText = [](const QString&) { throw std::bad_alloc(); };
    form.onOk = [] { throw std::runtime_error("unexpected"); };
    EXPECT_EQ(ToldBy([&] { QTest::keyClick(&form.edit, Qt::Key_A); }),
              "IDS_TECHVIEW-STRING_MEMORY_ERR");
    prompts.ExpectMessage();
    Click(form.ok);
    EXPECT_TRUE(form.isVisible()) << "after an error the dialog stays";
}

// ---- Texts ----

TEST_F(UiTest, AnOpenWindowChangesItsLanguage) {
    Form form;
    form.onInit = [&] {
        form.AddTextEntry(form.combo, "IDS_ADDED", 5);
        form.SetHeadKey(form.table, 1, "IDS_OTHER");
        form.combo.removeItem(1);
    };
    quotes.language = {{"IDS_TITLE", "Titel"}, {"IDS_FORMATTED", "Nr. %1"}};
    Show(form);
    EXPECT_EQ(form.windowTitle(), "Titel");
    EXPECT_EQ(form.button.text(), "Nr. 1");
    form.number = 2;
    form.combo.setCurrentIndex(1);
    Translate(form, {{"IDS_TITLE", "Title"},
                     {"IDS_LABEL", "Label"},
                     {"IDS_HINT", "Hint"},
                     {"IDS_SUFFIX", " %"},
                     {"IDS_ENTRY", "Entry"},
                     {"IDS_ADDED", "Added"},
                     {"IDS_HEAD", "Head"},
                     {"IDS_OTHER", "Other"},
                     {"IDS_FORMATTED", "No. %1"}});
    const std::pair<QVariant, const char*> texts[] = {
        {form.windowTitle(), "Title"},
        {form.label.text(), "Label"},
        {form.label.toolTip(), "own text"},
        {form.edit.text(), "IDS_LABEL"},  // what the user can edit is no key
        {form.edit.placeholderText(), "Hint"},
        {form.spin.suffix(), " %"},
        {form.combo.itemText(0), "Entry"},
        {form.combo.itemText(1), "Added"},
        {form.table.horizontalHeaderItem(0)->text(), "Head"},
        {form.table.model()->headerData(1, Qt::Horizontal), "Other"},
        {form.button.text(), "No. 2"},
    };
    for (const auto& [shown, expected] : texts) {
        EXPECT_EQ(shown.toString(), expected);
    }
    EXPECT_EQ(form.combo.count(), 2) << "an entry that is gone stays gone";
    EXPECT_EQ(form.combo.currentData(), 5);
    // Another key takes the place of the form's; a text that is no key stays.
    form.SetTextKey(form.label, "IDS_OTHER");
    form.SetTextKey(form.cancel, "as it is");
    Translate(form, {{"IDS_OTHER", "Others"}, {"IDS_LABEL", "Labels"}});
    EXPECT_EQ(form.label.text(), "Others");
    EXPECT_EQ(form.cancel.text(), "as it is");
}

TEST_F(UiTest, ASheetChangesItsLanguageWithItsPages) {
    FormOf<ui::PropertyPage> shown;
    FormOf<ui::PropertyPage> waiting;
    ui::PropertySheet sheet("IDS_CAPTION", nullptr, 0);
    sheet.AddPage(shown);
    sheet.AddPage(waiting);
    Show(sheet);
    Translate(sheet, {{"IDS_CAPTION", "Sheet"},
                      {"IDS_TITLE", "Page"},
                      {"IDS_LABEL", "Label"},
                      {"IDS_SETTING-SHEET_OK", "Fine"}});
    EXPECT_EQ(sheet.windowTitle(), "Sheet");
    EXPECT_EQ(Item<QPushButton>(sheet, ui::kIdOk).text(), "Fine");
    EXPECT_EQ(shown.label.text(), "Label");
    for (const int page : {0, 1}) {
        EXPECT_EQ(sheet.GetTabControl().tabText(page), "Page");
    }
    EXPECT_FALSE(waiting.IsCreated());
    // Enter on a page's button presses it, and the sheet's OK shows that it does not count.
    shown.tool.setFocus();
    Press(sheet, Qt::Key_Return);
    shown.button.setFocus();
    EXPECT_FALSE(Item<QPushButton>(sheet, ui::kIdOk).isDefault());
    Press(sheet, Qt::Key_Enter);
    EXPECT_EQ(shown.log, QStringList({"tool", "button"}));
    EXPECT_TRUE(sheet.isVisible());
    sheet.RemovePage(shown);
    sheet.RemovePage(waiting);
}

// ---- Prompts ----

TEST_F(UiTest, AskingAndRefusing) {
    Form form;
    form.edit.setText("12");
    Show(form);
    prompts.ExpectYesNo(true);
    EXPECT_EQ(form.Ask("really?"), ui::Answer::Yes);
    EXPECT_EQ(prompts.Last().title, "Terminal");
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Question);
    EXPECT_EQ(prompts.Last().presetAnswer, ui::Answer::No);
    prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo);
    EXPECT_EQ(form.Ask("really?", "Export", ui::Answer::Yes), ui::Answer::None);
    EXPECT_EQ(prompts.Last().title, "Export");
    EXPECT_EQ(prompts.Last().presetAnswer, ui::Answer::Yes);

    Type(form.edit, "345");
    QTest::keyClick(&form.edit, Qt::Key_Backspace);
    QTest::keyClicks(&form.edit, "6");
    form.cancel.setFocus();
    prompts.ExpectMessage();
    form.Refuse(form.edit, "too much");
    EXPECT_EQ(prompts.Last().text, "too much");
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
    EXPECT_EQ(form.edit.text(), "12");
    EXPECT_EQ(form.edit.selectedText(), "12");
    EXPECT_TRUE(form.edit.hasFocus());
    prompts.ExpectMessage();
    form.Refuse(form.combo, "nothing to type");
    EXPECT_TRUE(form.combo.hasFocus());
}

TEST_F(UiTest, AFileToWriteIsAskedForUntilItsNameCounts) {
    Write(Path("old.csv"), "1");
    const auto ask = [](bool asksCreate) {
        return ui::AskSaveFile(nullptr,
                               {.title = "Save", .name = "a.csv", .asksCreate = asksCreate});
    };
    prompts.ExpectSaveFile(Path("*.csv"));
    prompts.ExpectMessage();
    prompts.ExpectSaveFile(Path("new.csv"));
    prompts.ExpectYesNo(false);
    prompts.ExpectSaveFile(Path("new.csv"));
    prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo);
    prompts.ExpectSaveFile(Path("other.csv"));
    prompts.ExpectYesNo(true);
    EXPECT_EQ(ask(true), Path("other.csv"));
    EXPECT_EQ(prompts.All()[1].text, "IDS_TADIALOGS-FILE_WILDCARD *.csv");
    EXPECT_EQ(prompts.All()[1].title, "Terminal");
    EXPECT_EQ(prompts.Last().text, "IDS_TADIALOGS-FILE_ASK_CREATE other.csv");
    EXPECT_EQ(prompts.Last().title, "Terminal");
    EXPECT_EQ(prompts.Last().presetAnswer, ui::Answer::Yes);
    prompts.ExpectSaveFile(Path("old.csv"));
    EXPECT_EQ(ask(true), Path("old.csv")) << "it exists";
    prompts.ExpectSaveFile(Path("new.csv"));
    EXPECT_EQ(ask(false), Path("new.csv"));
    prompts.ExpectCancel(ScriptedPrompts::Kind::SaveFile);
    EXPECT_EQ(ask(true), "");
}

// ---- A life without exec ----

/// Writes down what it is sent.
class Owner : public CWnd {
public:
    std::vector<unsigned> messages;
    std::function<void()> onMessage = [] {};

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t) override {
        messages.push_back(message + static_cast<unsigned>(wParam));
        onMessage();
        return 0;
    }
};

class Viewer : public FormOf<ui::ModelessDialog> {
public:
    explicit Viewer(CWnd* owner) : FormOf(owner) { SetCancelButton(cancel); }
    using ModelessDialog::KillTimer;
    using ModelessDialog::SetTimer;

    int ticks = 0;

protected:
    void OnCancel() override { PostToOwner(10, 1, 0); }
    void OnTimer(int id) override {
        if (++ticks == 3) {
            KillTimer(id);
            throw std::bad_alloc();
        }
    }
};

TEST_F(UiTest, AModelessWindowIsClosedByItsOwner) {
    Owner owner;
    auto* viewer = new Viewer(&owner);
    Show(*viewer);
    viewer->edit.setFocus();
    Press(*viewer, Qt::Key_Return);
    EXPECT_EQ(viewer->log, QStringList()) << "no button is the default one";
    Press(*viewer, Qt::Key_Escape);
    viewer->close();
    Click(viewer->cancel);
    window::PostMessageA(owner, 20, 0, 0);
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_TRUE(owner.messages.empty()) << "posted, not sent";
    owner.onMessage = [&] { delete std::exchange(viewer, nullptr); };
    QCoreApplication::processEvents();
    EXPECT_EQ(owner.messages, std::vector<unsigned>({11, 11, 11, 20}));
    EXPECT_EQ(viewer, nullptr);
}

TEST_F(UiTest, PostedMessagesOfAnOwnerThatIsGoneAreDropped) {
    Owner stays;
    {
        Owner goes;
        window::PostMessageA(stays, 1, 0, 0);
        window::PostMessageA(goes, 2, 0, 0);
        window::PostMessageA(stays, 3, 0, 0);
    }
    // One message a turn: what a handler posts comes behind what waits.
    stays.onMessage = [&] {
        if (stays.messages.size() == 1) {
            window::PostMessageA(stays, 4, 0, 0);
        }
    };
    int delivered = 0;
    while (window::DeliverPostedMessage()) {
        ++delivered;
    }
    EXPECT_EQ(delivered, 3);
    EXPECT_EQ(stays.messages, std::vector<unsigned>({1, 3, 4}));
    QCoreApplication::processEvents();
    EXPECT_EQ(stays.messages.size(), 3U);
}

TEST_F(UiTest, TimersHaveIds) {
    {
        Viewer viewer(nullptr);
        viewer.SetTimer(10003, 100);
        viewer.SetTimer(10003, 1000);
        EXPECT_EQ(timers.Period(10003), 1000);
        prompts.ExpectMessage();
        timers.Tick(10003, 5);
        EXPECT_EQ(viewer.ticks, 3) << "the third one stops it";
        viewer.SetTimer(7, 1);
        viewer.close();
    }
    EXPECT_EQ(timers.Period(7), 0) << "it ended with its window";
    // The machine's own timers.
    ui::SetTimers(nullptr);
    Viewer viewer(nullptr);
    viewer.ticks = 10;
    viewer.SetTimer(7, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return viewer.ticks > 12; }));
    viewer.KillTimer(7);
    const int before = viewer.ticks;
    QTest::qWait(5);
    EXPECT_EQ(viewer.ticks, before);
}

}  // namespace
}  // namespace ta::test
