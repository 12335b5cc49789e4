// SPDX-License-Identifier: MIT
#include "platform/qt/QtHost.h"

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QElapsedTimer>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QStringConverter>
#include <QTranslator>
#include <QVersionNumber>
#include <filesystem>
#include <utility>

#include "platform/DesktopAssociation.h"
#include "platform/FileRegistry.h"
#include "platform/Process.h"
#include "platform/ProgramPath.h"
#include "platform/UserFolders.h"
#include "platform/qt/AssociationIcons.h"
#include "platform/qt/DialogParts.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/help/QtHelpViewer.h"

namespace platform_qt {

namespace {

class QtPointer : public platform::Pointer {
  public:
    void Shape(platform::PointerShape shape) override {
        if (shape == platform::PointerShape::Default) {
            // Override cursors are a stack; a waiting pointer never leaves one behind.
            while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
            return;
        }
        const QCursor cursor(shape == platform::PointerShape::Hourglass ? Qt::WaitCursor : Qt::BusyCursor);
        if (QGuiApplication::overrideCursor()) {
            QGuiApplication::changeOverrideCursor(cursor);
        } else {
            QGuiApplication::setOverrideCursor(cursor);
        }
    }
};

class QtEventPump : public platform::EventPump {
  public:
    QtEventPump() { sinceLast_.start(); }

    // An attempt of the search is over after a few calls, so the counter runs on from attempt to attempt;
    // only every 64th call looks at the clock.
    void Yield() override {
        if (++calls_ % 64 != 0 || sinceLast_.elapsed() < 8) return;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        sinceLast_.restart();
    }

  private:
    unsigned calls_ = 0;
    QElapsedTimer sinceLast_;
};

class SteadyClock : public platform::Clock {
  public:
    // Fine enough for a limit of a minute.
    std::chrono::nanoseconds Now() const override { return platform::CoarseTime(); }
};

class ClockSeeds : public platform::SeedSource {
  public:
    // The counter keeps two calls within one tick of the clock apart.
    std::uint64_t NextSeed() override {
        const auto ticks = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch() /
                                                      std::chrono::nanoseconds(1));
        return ticks + ++counter_ * 0x9E3779B97F4A7C15U;
    }

  private:
    std::uint64_t counter_ = 0;
};

class QtColourDialogs : public platform::ColourDialogs {
  public:
    // The toolkit keeps one set of custom colours for the whole process: filled before, read after.
    std::optional<std::uint32_t> Choose(std::uint32_t initial, CustomColours& custom,
                                        int helpContext) override {
        int place = 0;
        for (const std::uint32_t color : custom) QColorDialog::setCustomColor(place++, FromLowRed(color));
        QColorDialog dialog(FromLowRed(initial), DialogOwner());
        dialog.setWindowTitle(QStringLiteral("Couleurs"));
        HelpOnF1(dialog, [helpContext] { return helpContext; });
        if (dialog.exec() != QDialog::Accepted) return std::nullopt;
        const QColor chosen = dialog.selectedColor();
        place = 0;
        for (std::uint32_t& color : custom) color = ToLowRed(QColorDialog::customColor(place++));
        return ToLowRed(chosen);
    }
};

class QtApplication : public platform::Application {
  public:
    explicit QtApplication(std::span<const char* const> words) {
        const std::filesystem::path program = platform::ProgramPath(words.empty() ? "" : words.front());
        folder_ = program.parent_path().string();
        fileName_ = program.stem().string();
        for (const char* word : words.subspan(words.empty() ? 0 : 1)) {
            if (!commandLine_.empty()) commandLine_ += ' ';
            commandLine_ += word;
        }
    }
    const std::string& ProgramFolder() const override { return folder_; }
    const std::string& ProgramFileName() const override { return fileName_; }
    std::string Title() const override { return "Ninarix"; }
    int MajorVersion() const override { return Version().majorVersion(); }
    int MinorVersion() const override { return Version().minorVersion(); }
    std::string CommandLine() const override { return commandLine_; }
    std::string StateFolder() const override { return platform::StateFolder(); }
    std::string HelpFile() const override { return helpFile_; }
    void HelpFile(const std::string& path) override { helpFile_ = path; }

  private:
    static QVersionNumber Version() {
        return QVersionNumber::fromString(QCoreApplication::applicationVersion());
    }

    std::string folder_, fileName_;
    std::string commandLine_;
    std::string helpFile_;
};

// Without a data folder of the user nothing is stored.
std::string RegistryFile(const platform::DesktopFolders& folders) {
    return folders.own.empty() ? std::string() : folders.own + "/ninarix/registry.ini";
}

}  // namespace

struct QtHost::Parts {
    explicit Parts(std::span<const char* const> words) : application(words) {
        // What the toolkit's own dialogs remember would otherwise lie among all programs' settings, for ever.
        const QString state = FromUtf8(application.StateFolder());
        if (!state.isEmpty()) QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, state);
        desktop.CompleteIcons();
    }

    QtMessageBoxes messages;
    QtPointer pointer;
    QtEventPump events;
    SteadyClock clock;
    ClockSeeds seeds;
    QtFileDialogs files;
    QtHelpViewer help{messages};
    QtApplication application;
    QtColourDialogs colours;
    const platform::DesktopFolders folders = platform::DesktopFolders::OfEnvironment();
    platform::DesktopAssociation desktop{folders, AssociationIcons};
    platform::FileRegistry registry{RegistryFile(folders), &desktop};
};

QtHost::QtHost(std::span<const char* const> words) : parts_(std::make_unique<Parts>(words)) {}
QtHost::~QtHost() = default;

platform::Host QtHost::Interfaces() const {
    return {&parts_->messages, &parts_->pointer, &parts_->events,      &parts_->clock,   &parts_->seeds,
            &parts_->files,    &parts_->help,    &parts_->application, &parts_->colours, &parts_->registry};
}

QString PathFromBytes(std::string_view bytes) {
    using Convert = QStringConverter;
    // As many bytes as a character's first one announces.
    const auto announced = [](char first) {
        const auto byte = static_cast<unsigned char>(first);
        return byte < 0xC0 ? 1U : byte < 0xE0 ? 2U : byte < 0xF0 ? 3U : 4U;
    };
    QString path;
    while (!bytes.empty()) {
        const std::string_view next = bytes.substr(0, announced(bytes.front()));
        QStringDecoder decoder(Convert::Utf8, Convert::Flag::Stateless | Convert::Flag::ConvertInitialBom);
        const QString character = decoder(QByteArrayView(next.data(), static_cast<qsizetype>(next.size())));
        if (decoder.hasError()) {
            path += QChar(0xDC00 + static_cast<unsigned char>(bytes.front()));
            bytes.remove_prefix(1);
        } else {
            path += character;
            bytes.remove_prefix(next.size());
        }
    }
    return path;
}

std::string PathToBytes(const QString& path) {
    std::string bytes;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i].unicode();
        if (unit >= 0xDC80 && unit <= 0xDCFF) {
            bytes += static_cast<char>(unit - 0xDC00);
        } else {
            const bool pair =
                path[i].isHighSurrogate() && i + 1 < path.size() && path[i + 1].isLowSurrogate();
            bytes += path.mid(i, pair ? 2 : 1).toStdString();
            if (pair) ++i;
        }
    }
    return bytes;
}

QColor FromLowRed(std::uint32_t color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
            static_cast<int>(color >> 16 & 0xFF)};
}

std::uint32_t ToLowRed(const QColor& color) {
    return static_cast<std::uint32_t>(color.red() | color.green() << 8 | color.blue() << 16);
}

QWidget* DialogOwner() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

void InstallFrenchTexts() {
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral("qtbase_fr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    }
}

}  // namespace platform_qt
