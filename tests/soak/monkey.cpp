// SPDX-License-Identifier: MIT

// Random play with the whole program. monkey [--seed N] [--seconds N]
//
// A seed alone plays its sequence once, as it was played before, and tells every event; otherwise one
// sequence after another, from that seed on, for so many seconds (3). The last seed told is the one that
// broke something, whatever the program died of.

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>
#include <chrono>
#include <iostream>

#include "Promises.h"
#include "Soak.h"
#include "settings/dialogs/wCancel.h"
#include "shell/Commands.h"

namespace {

using platform::MessageButton;
namespace MessageStyle = platform::MessageStyle;

constexpr int deepest = 3;
constexpr int longestRun = 3000;  // yields until a run is cancelled
constexpr const char* files[] = {"a.nx3", "b.nx3", "c.nx3", "absent.nx3", "absent/d.nx3", "."};

std::uint64_t seed = 0;
bool tells = false;  // an event a line; what happened inside another event stands further right

// Plays the whole program at random: keys, clicks, menus, drops, closings and answers, also while a question
// is open or a run is under way. Everything is drawn from the seed, and clock and seeds are the scripted
// host's, so a seed is played alike every time. Boxes are modal windows for half of the time; for the other
// half nothing is blocked while they are open.
class Monkey : public Promises, private QObject, private Chance {
  public:
    Monkey() : Chance(seed) {
        IniParamProcs::DeleteIniParam("Options", "Color_0");  // a first start, with every colour
        Start();
        host.seed = seed;
        host.stepPerReading = std::chrono::microseconds(OnceIn(2) ? 100 : 10'000);
        host.onShow = [this] { WhileABoxIsOpen(); };
        host.onYield = [this] { WhileARunYields(); };
        host.onChooseColour = [this](auto, auto&) {
            return OnceIn(3) ? std::nullopt : std::optional(static_cast<std::uint32_t>(Below(1 << 24)));
        };
        for (int n = 0; n < 3; ++n) ChangeFile();
        qApp->installEventFilter(this);
    }

    ~Monkey() override {
        qApp->removeEventFilter(this);
        host.onShow = {};
        main.reset();
        ServeEvents();
    }

    // Plays so many events and looks after each whether the program keeps its promises; ends at the first
    // that is broken, with a test failure.
    void Play(int events) {
        for (int n = 0; n < events && !HasFailure(); ++n) {
            if (!main->isVisible()) {
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
            CheckFile(grid->Document());
            CheckHistory(grid->Document());
        }
    }

  private:
    void TestBody() override {}

    void Note(const std::string& event) {
        if (tells) std::cerr << std::string(static_cast<std::size_t>(4 * depth_), ' ') << event << "\n";
    }

    // ---- Events.

    void Act() {
        struct Kind {
            int weight;
            const char* name;
            void (Monkey::*act)();
        };
        static constexpr Kind kinds[] = {{24, "key", &Monkey::TypeKey},
                                         {20, "shortcut", &Monkey::TypeShortcut},
                                         {25, "click", &Monkey::Click},
                                         {6, "menu", &Monkey::ChooseFromMenu},
                                         {7, "window", &Monkey::ChangeWindows},
                                         {7, "drop", &Monkey::DropFiles},
                                         {2, "write a file", &Monkey::ChangeFile},
                                         {9, "serve", &Monkey::Serve}};
        int place = Below(100);
        const auto* kind = std::begin(kinds);
        while (place >= kind->weight) place -= kind++->weight;
        Note(kind->name);
        (this->*kind->act)();
    }

    void ActInside(int most) {
        if (depth_ >= deepest || !main->isVisible()) return;
        const auto isBlocked = [] { return QApplication::activeModalWidget() || BusyGuard::Active(); };
        const bool blocked = isBlocked();
        const std::string before = blocked ? Everything() : "";
        ++depth_;
        // An event may end the dialog, or begin one.
        for (int n = Below(most + 1); n > 0 && main->isVisible() && isBlocked() == blocked; --n) Act();
        --depth_;
        if (!blocked || !isBlocked()) return;
        EXPECT_EQ(Everything(), before) << "something reacted beside a dialog or a run";
    }

    // As the window system does: what a modal window blocks gets no key, and nothing runs between two keys.
    void Press(QKeyCombination key) {
        QWidget* modal = QApplication::activeModalWidget();
        QWindow* window = (modal && OnceIn(2) ? modal : main.get())->windowHandle();
        const bool text = key.key() < 128 && key.keyboardModifiers() == Qt::NoModifier;
        Note("key " + QKeySequence(key).toString().toStdString());
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            qt_handleKeyEvent(window, type, key.key(), key.keyboardModifiers(),
                              text ? QString(QChar(static_cast<char16_t>(key.key()))) : QString());
        }
    }

    void TypeKey() {
        static constexpr QKeyCombination keys[] = {Qt::Key_Left,
                                                   Qt::Key_Right,
                                                   Qt::Key_Up,
                                                   Qt::Key_Down,
                                                   Qt::Key_Delete,
                                                   Qt::Key_Tab,
                                                   Qt::Key_Escape,
                                                   Qt::Key_Return,
                                                   Qt::Key_Space,
                                                   Qt::Key_A,
                                                   Qt::Key_Backspace,
                                                   Qt::SHIFT | Qt::Key_Backtab,
                                                   Qt::Key_Home,
                                                   Qt::Key_F6,
                                                   Qt::CTRL | Qt::Key_Down,
                                                   Qt::SHIFT | Qt::Key_F6,
                                                   Qt::CTRL | Qt::Key_Tab,
                                                   Qt::CTRL | Qt::Key_PageDown};
        const auto digit = static_cast<Qt::Key>(Qt::Key_0 + Below(10));
        Press(!OnceIn(2) ? OneOf(keys) : OnceIn(4) ? Qt::CTRL | digit : digit);
    }

    void TypeShortcut() {
        const Command command = OneOf(Commands());
        const QKeyCombination key = OnceIn(8) ? command.keys[1] : command.keys[0];
        const bool quits = command.name == std::string("mnuFileQuit") && !OnceIn(4);
        if (key != QKeyCombination() && !quits) Press(key);
    }

    // On a tool, a button of the palette or a cell.
    void Click() {
        const auto& toolbar = Child<QToolBar>(*main, "tbrTools");
        const int index = Below(82);
        QWidget* const targets[] = {toolbar.widgetForAction(OneOf(toolbar.actions())),
                                    &main->picPalette().cmdValue(index % 10),
                                    &main->picPalette().cmdMask(index % 10),
                                    main->ActiveGrid() && index > 0 ? &Active().ctrlCells(index) : nullptr};
        QWidget* widget = targets[std::min(Below(5), 3)];
        if (!widget) return;
        const QPoint place = widget->mapTo(main.get(), widget->rect().center());
        Note("at " + std::to_string(place.x()) + ", " + std::to_string(place.y()));
        const auto button = OnceIn(6) ? Qt::RightButton : Qt::LeftButton;
        QTest::mouseClick(main->windowHandle(), button, {}, place);
        if (OnceIn(10)) QTest::mouseDClick(main->windowHandle(), button, {}, place);
    }

    void ChooseFromMenu() {
        if (QApplication::activeModalWidget()) return;
        QAction* item = OneOf(OneOf(main->menuBar()->actions())->menu()->actions());
        if (item->isSeparator() || !item->isVisible() || (item->isCheckable() && BusyGuard::Active())) return;
        Note("menu " + item->objectName().toStdString());
        item->trigger();
    }

    void ChangeWindows() {
        if (QApplication::activeModalWidget()) return;
        const auto grids = main->Grids();
        const int change = Below(7);
        if (change == 0) main->resize(480 + Below(700), 420 + Below(500));
        if (change == 1) main->close();
        if (change <= 1 || grids.empty()) return;
        auto* window = qobject_cast<QMdiSubWindow*>(OneOf(grids)->parentWidget());
        if (change % 2 == 0) window->close();
        if (change % 2 == 1 && !BusyGuard::Active()) Area().setActiveSubWindow(window);
    }

    void DropFiles() {
        std::vector<std::string> paths;
        for (int n = 1 + Below(3); n > 0; --n) paths.push_back(host.PathOf(OneOf(files)));
        Drop(paths);
    }

    // Another program writes a grid: a whole one, a damaged one, or it removes it.
    void ChangeFile() {
        const std::string name = files[Below(3)];
        std::string text = "[]\r\n";
        for (int i = 1; i <= 81; ++i) {
            if (OnceIn(2)) continue;
            text += std::to_string(i) + "=" + std::to_string(SolutionAt(i)) +
                    (OnceIn(2) ? "|1|0\r\n" : "|0|0\r\n");
        }
        if (OnceIn(6)) text += "81=256|0|0\r\n";
        ScriptedHost::WriteFile(host.PathOf(name), text);
        if (OnceIn(8)) std::filesystem::remove(host.PathOf(name));
    }

    void Serve() { ServeEvents(); }

    // ---- Answers.

    // A modal box is a window that no key closes.
    void WhileABoxIsOpen() {
        // Only a question about a file has no answer by now that could be for it.
        const bool isFile = !host.questions.empty() && !host.questions.back().filter.empty();
        const auto question = isFile ? std::exchange(host.questions.back(), {}) : platform::FileQuestion();
        const int buttons = isFile ? 0 : host.boxes.back().style & 7;
        const bool asksToClose = buttons == MessageStyle::YesNoCancel;
        QWidget box;
        // The toolkit itself does not survive that a window goes while its closing is being agreed on.
        if (asksToClose || closing_ || OnceIn(2)) {
            box.setWindowModality(Qt::ApplicationModal);
            box.show();
        }
        ActInside(4);
        if (isFile) host.fileAnswers.push_front(AnyFile(question.save));
        using enum MessageButton;
        host.always = buttons == 0                        ? Ok
                      : buttons == MessageStyle::OkCancel ? (OnceIn(3) ? Cancel : Ok)
                      : OnceIn(2)                         ? Yes
                      : asksToClose && OnceIn(2)          ? Cancel
                                                          : No;
        closing_ = asksToClose && host.always == Yes;
        Note("answer " + std::to_string(static_cast<int>(host.always)));
    }

    void WhileARunYields() {
        auto* progress = main->findChild<wCancel*>();
        if (progress && (++yields_ > longestRun || OnceIn(1000))) {
            OnceIn(2) ? progress->cmdCancel_Click() : void(progress->close());
        } else if (OnceIn(50)) {
            ActInside(2);
        }
    }

    std::string AnyFile(bool save) {
        std::string name = OneOf(files);
        if (save && OnceIn(2)) name = OnceIn(2) ? "saved.nx3" : "other.nx3";
        return OnceIn(4) ? std::string() : host.PathOf(name);
    }

    // Has every dialog that opens answered, by when it waits for its user.
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        if (dialog) QTimer::singleShot(0, dialog, [this, dialog] { PlayDialog(*dialog); });
        return false;
    }

    void PlayDialog(QDialog& dialog) {
        const QPointer<QDialog> open(&dialog);
        Note("dialog " + dialog.objectName().toStdString());
        for (int n = Below(6); n > 0 && open && open->isVisible(); --n) {
            if (OnceIn(3)) ActInside(2);
            const auto parts = open ? open->findChildren<QWidget*>() : QList<QWidget*>();
            if (!parts.isEmpty()) Touch(*OneOf(parts));
        }
        if (!open) return;
        const int end = Below(4);
        if (end == 0) open->close();
        if (end == 1) open->reject();
        if (end >= 2) Child<QPushButton>(*open, QStringLiteral("cmdCommands(%1)").arg(end - 2)).click();
        if (open) open->hide();
    }

    void Touch(QWidget& part) {
        if (!part.isVisible() || !part.isEnabled() || part.objectName().startsWith("cmdCommands")) return;
        Note("touch " + part.objectName().toStdString());
        if (auto* box = qobject_cast<QComboBox*>(&part)) box->setCurrentIndex(Below(box->count() + 1) - 1);
        if (auto* tabs = qobject_cast<QTabWidget*>(&part)) tabs->setCurrentIndex(Below(tabs->count()));
        if (qobject_cast<QLineEdit*>(&part)) QTest::keyClick(&part, "0123456789.,-a"[Below(14)]);
        if (auto* button = qobject_cast<QAbstractButton*>(&part)) button->click();
    }

    int depth_ = 0;         // of events inside events
    int yields_ = 0;        // since the last event that was not inside another
    bool closing_ = false;  // a window's closing is being agreed on
};

TEST(MonkeyTest, BreaksNoPromise) {
    using std::chrono::steady_clock;
    const auto only = Option("--seed");
    const auto seconds = Option("--seconds").value_or(only ? 0 : 3);
    const auto end = steady_clock::now() + std::chrono::seconds(seconds);
    seed = only.value_or(1);
    Monkey().Play(20);  // the toolkit keeps open what it needs for the first time
    const int descriptors = OpenDescriptors();
    tells = only && seconds == 0;
    int sequences = 0;
    int events = 0;
    for (; sequences == 0 || steady_clock::now() < end; ++seed, ++sequences) {
        const int length = 50 + static_cast<int>(seed % 150);
        events += length;
        std::cerr << "monkey --seed " << seed << std::endl;
        Monkey().Play(length);
        ServeEvents();
        EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty()) << "windows are left";
        EXPECT_TRUE(Eventually([&] { return OpenDescriptors() <= descriptors; })) << "descriptors are left";
        if (HasFailure()) return;
    }
    std::cout << events << " events in " << sequences << " sequences, the last of seed " << seed - 1 << "\n";
}

}  // namespace
