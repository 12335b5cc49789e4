#include "Monkey.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <fstream>

#include "document/window/BusyGuard.h"
#include "settings/dialogs/wCancel.h"
#include "shell/Commands.h"

namespace {

using platform::MessageButton;
namespace MessageStyle = platform::MessageStyle;

constexpr int deepest = 3;
constexpr int longestRun = 3000;  // yields until a run is cancelled
constexpr const char* files[] = {"a.nx3", "b.nx3", "c.nx3", "absent.nx3", "absent/d.nx3", "."};

std::string& EventLog() {
    static std::string log;
    return log;
}

}  // namespace

// Has every dialog that opens answered.
class Monkey::DialogWatch : public QObject {
  public:
    explicit DialogWatch(Monkey& monkey) : monkey_(monkey) { qApp->installEventFilter(this); }

  private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        // By then it waits for its user.
        if (dialog) {
            QTimer::singleShot(0, dialog, [this, dialog] { monkey_.PlayDialog(*dialog); });
        }
        return false;
    }

    Monkey& monkey_;
};

Monkey::Monkey(std::uint64_t seed) : luck_(seed) {
    EventLog().clear();
    IniParamProcs::DeleteIniParam("Options", "Color_0");  // a first start, with every colour
    Start();
    host.seed = seed;
    host.stepPerReading = std::chrono::microseconds(OnceIn(2) ? 100 : 10'000);
    host.onShow = [this] { WhileABoxIsOpen(); };
    host.onYield = [this] { WhileARunYields(); };
    host.onChooseColour = [this](std::uint32_t, auto&) -> std::optional<std::uint32_t> {
        if (OnceIn(3)) return std::nullopt;
        return static_cast<std::uint32_t>(Below(1 << 24));
    };
    for (int n = 0; n < 3; ++n) ChangeFile();
    watch_ = std::make_unique<DialogWatch>(*this);
}

Monkey::~Monkey() {
    watch_.reset();
    host.onShow = {};
    main.reset();
    ServeEvents();
}

const std::string& Monkey::Log() {
    return EventLog();
}

void Monkey::Note(const std::string& event) {
    EventLog() += std::string(static_cast<std::size_t>(4 * depth_), ' ') + event + "\n";
}

void Monkey::Play(int events) {
    for (int n = 0; n < events && !HasFailure(); ++n) {
        if (!main->isVisible()) {
            Note("start");
            main.reset();
            Start();
        }
        yields_ = 0;
        closing_ = false;
        Act();
        CheckShown(n % 16 == 0);
    }
    Serve();
    CheckShown(true);
    for (const OpenGrid& grid : main->Grids()) {
        CheckFile(*grid);
        CheckHistory(*grid);
    }
}

// ---- Events.

void Monkey::Act() {
    struct Kind {
        int weight;
        void (Monkey::*act)();
    };
    static constexpr Kind kinds[] = {
        {24, &Monkey::TypeKey},     {20, &Monkey::TypeShortcut}, {12, &Monkey::ClickCell},
        {8, &Monkey::ClickPalette}, {5, &Monkey::ClickTool},     {6, &Monkey::ChooseFromMenu},
        {3, &Monkey::CloseGrid},    {1, &Monkey::CloseProgram},  {3, &Monkey::ActivateGrid},
        {7, &Monkey::DropFiles},    {1, &Monkey::ResizeWindow},  {1, &Monkey::ChangeFile},
        {9, &Monkey::Serve}};
    int place = Below(100);
    for (const Kind& kind : kinds) {
        place -= kind.weight;
        if (place < 0) return (this->*kind.act)();
    }
}

void Monkey::ActInside(int most) {
    if (depth_ >= deepest || !main->isVisible()) return;
    const bool blocked = QApplication::activeModalWidget() || BusyGuard::Active();
    const std::string before = blocked ? Everything() : "";
    ++depth_;
    for (int n = Below(most + 1); n > 0 && main->isVisible(); --n) Act();
    --depth_;
    if (!blocked) return;
    EXPECT_EQ(Everything(), before) << "something reacted beside a dialog or a run";
}

// As the window system does: what a modal window blocks gets no key, and nothing runs between two keys.
void Monkey::Press(QKeyCombination key) {
    QWidget* modal = QApplication::activeModalWidget();
    QWindow* window = (modal && OnceIn(2) ? modal : main.get())->windowHandle();
    const bool text = key.key() < 128 && key.keyboardModifiers() == Qt::NoModifier;
    Note("key " + QKeySequence(key).toString().toStdString());
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        qt_handleKeyEvent(window, type, key.key(), key.keyboardModifiers(),
                          text ? QString(QChar(static_cast<char16_t>(key.key()))) : QString());
    }
}

void Monkey::TypeKey() {
    static constexpr Qt::Key keys[] = {Qt::Key_Left,   Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,
                                       Qt::Key_Delete, Qt::Key_Tab,   Qt::Key_Escape, Qt::Key_Return,
                                       Qt::Key_Space,  Qt::Key_A,     Qt::Key_0};
    if (OnceIn(2)) return Press(static_cast<Qt::Key>(Qt::Key_1 + Below(9)));
    if (OnceIn(20)) return Press(Qt::SHIFT | Qt::Key_Backtab);
    Press(OneOf(keys));
}

void Monkey::TypeShortcut() {
    const Command& command = OneOf(Commands());
    if (command.name == std::string("mnuFileQuit") && !OnceIn(4)) return;
    for (const QKeyCombination key : command.keys) {
        if (key != QKeyCombination()) Press(key);
    }
}

void Monkey::Click(const QWidget& widget) {
    QTest::mouseClick(main->windowHandle(), OnceIn(20) ? Qt::RightButton : Qt::LeftButton, {},
                      widget.mapTo(main.get(), widget.rect().center()));
}

void Monkey::ClickCell() {
    if (!main->ActiveGrid()) return;
    const int index = 1 + Below(81);
    Note("click cell " + std::to_string(index));
    Click(Active().ctrlCells(index));
}

void Monkey::ClickPalette() {
    const int index = Below(10);
    const bool value = OnceIn(2);
    Note((value ? "click value " : "click mask ") + std::to_string(index));
    Click(value ? main->picPalette().cmdValue(index) : main->picPalette().cmdMask(index));
}

void Monkey::ClickTool() {
    const auto& toolbar = Child<QToolBar>(*main, "tbrTools");
    QAction* button = OneOf(toolbar.actions());
    Note("click " + button->objectName().toStdString());
    Click(*toolbar.widgetForAction(button));
}

void Monkey::ChooseFromMenu() {
    if (QApplication::activeModalWidget()) return;
    const QList<QAction*> items = OneOf(main->menuBar()->actions())->menu()->actions();
    QAction* item = OneOf(items);
    if (item->isSeparator() || !item->isVisible() || (item->isCheckable() && BusyGuard::Active())) return;
    Note("menu " + item->objectName().toStdString());
    item->trigger();
}

void Monkey::CloseGrid() {
    const auto grids = main->Grids();
    if (QApplication::activeModalWidget() || grids.empty()) return;
    const OpenGrid& grid = OneOf(grids);
    Note("close " + grid->Caption().toStdString());
    grid->parentWidget()->close();
}

void Monkey::CloseProgram() {
    if (QApplication::activeModalWidget()) return;
    Note("close the program");
    main->close();
}

void Monkey::ActivateGrid() {
    const auto grids = main->Grids();
    if (QApplication::activeModalWidget() || BusyGuard::Active() || grids.empty()) return;
    const OpenGrid& grid = OneOf(grids);
    Note("activate " + grid->Caption().toStdString());
    Area().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(grid->parentWidget()));
}

void Monkey::DropFiles() {
    std::vector<std::string> paths;
    std::string names;
    for (int n = 1 + Below(3); n > 0; --n) {
        const std::string name = OneOf(files);
        names += " " + name;
        paths.push_back(host.PathOf(name));
    }
    Note("drop" + names);
    const std::size_t grids = main->Grids().size();
    Drop(paths);
    EXPECT_EQ(main->Grids().size(), grids) << "opened while the drag's source waits";
}

void Monkey::ResizeWindow() {
    Note("resize");
    main->resize(480 + Below(700), 420 + Below(500));
}

// Another program writes a grid: a whole one, a damaged one, or it removes it.
void Monkey::ChangeFile() {
    const std::string name = files[Below(3)];
    std::string text = "[]\r\n";
    for (int i = 1; i <= 81; ++i) {
        if (OnceIn(2)) continue;
        text += std::to_string(i) + "=" + std::to_string(SolutionAt(i)) + "|" + std::to_string(Below(2)) +
                "|0\r\n";
    }
    if (OnceIn(6)) text += "81=256|0|0\r\n";
    Note("write " + name);
    ScriptedHost::WriteFile(host.PathOf(name), text);
    if (OnceIn(8)) std::filesystem::remove(host.PathOf(name));
}

void Monkey::Serve() {
    Note("serve");
    ServeEvents();
}

// ---- Answers.

// What happens while a box is open; a modal one is a window that no key closes.
void Monkey::ActBeside(bool modal) {
    QWidget box;
    if (modal) box.setWindowModality(Qt::ApplicationModal);
    if (modal) box.show();
    ActInside(4);
}

void Monkey::WhileABoxIsOpen() {
    // Only a question about a file has no answer by now that could be for it.
    const bool isFile = !host.questions.empty() && !host.questions.back().filter.empty();
    if (isFile) {
        const platform::FileQuestion question = std::exchange(host.questions.back(), {});
        ActBeside(closing_ || OnceIn(2));
        closing_ = false;
        host.fileAnswers.push_front(AnyFile(question.save));
        return;
    }
    const int style = host.boxes.back().style;
    const int buttons = style & 7;
    const bool asksToClose = buttons == MessageStyle::YesNoCancel;
    // The toolkit itself does not survive that a window goes while its closing is being agreed on.
    ActBeside(asksToClose || closing_ || OnceIn(2));
    MessageButton answer = MessageButton::Ok;
    if (buttons == MessageStyle::OkCancel && OnceIn(3)) answer = MessageButton::Cancel;
    if (buttons == MessageStyle::YesNo) answer = OnceIn(2) ? MessageButton::Yes : MessageButton::No;
    if (asksToClose) {
        static constexpr MessageButton answers[] = {MessageButton::Yes, MessageButton::No,
                                                    MessageButton::Cancel};
        answer = OneOf(answers);
    }
    closing_ = asksToClose && answer == MessageButton::Yes;
    if (style == 305 && answer == MessageButton::Ok) {
        for (const OpenGrid& grid : main->Grids()) rewritten_.insert(&grid->Document());
    }
    Note("answer " + std::to_string(static_cast<int>(answer)));
    host.always = answer;
}

void Monkey::WhileARunYields() {
    auto* progress = main->findChild<wCancel*>();
    if (progress && (++yields_ > longestRun || OnceIn(1000))) {
        Note("cancel");
        if (OnceIn(2))
            progress->cmdCancel_Click();
        else
            progress->close();
    } else if (OnceIn(50)) {
        ActInside(2);
    }
}

std::string Monkey::AnyFile(bool save) {
    std::string name = OneOf(files);
    if (save && OnceIn(2)) name = OnceIn(2) ? "saved.nx3" : "other.nx3";
    Note("file " + name);
    return OnceIn(4) ? std::string() : host.PathOf(name);
}

void Monkey::PlayDialog(QDialog& dialog) {
    const QPointer<QDialog> open(&dialog);
    Note("dialog " + dialog.objectName().toStdString());
    for (int n = Below(6); n > 0 && open && open->isVisible(); --n) {
        if (OnceIn(3)) ActInside(2);
        const auto parts = open ? open->findChildren<QWidget*>() : QList<QWidget*>();
        if (!parts.isEmpty()) Touch(*OneOf(parts));
    }
    if (!open) return;
    const int end = Below(4);
    Note("end " + std::to_string(end));
    if (end == 0) open->close();
    if (end == 1) open->reject();
    if (end >= 2) Child<QPushButton>(*open, QStringLiteral("cmdCommands(%1)").arg(end - 2)).click();
    if (open) open->hide();
}

void Monkey::Touch(QWidget& part) {
    if (!part.isVisible() || !part.isEnabled() || part.objectName().startsWith("cmdCommands")) return;
    Note("touch " + part.objectName().toStdString());
    if (auto* box = qobject_cast<QComboBox*>(&part)) return box->setCurrentIndex(Below(box->count() + 1) - 1);
    if (auto* tabs = qobject_cast<QTabWidget*>(&part)) return tabs->setCurrentIndex(Below(tabs->count()));
    if (auto* button = qobject_cast<QAbstractButton*>(&part)) return button->click();
    if (qobject_cast<QLineEdit*>(&part)) QTest::keyClick(&part, "0123456789.,-a"[Below(14)]);
}
