// SPDX-License-Identifier: MIT
#include "printing/Printing.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "platform/Host.h"
#include "platform/SafeFile.h"
#include "platform/qt/PrintSystem.h"
#include "platform/qt/QtHost.h"
#include "printing/PageLayout.h"
#include "printing/PagePainter.h"
#include "printing/wPrinter.h"
#include "settings/ColorTable.h"
#include "settings/Settings.h"

namespace {

namespace PrintSystem = platform_qt::PrintSystem;

constexpr int pdfResolution = 1200;  // dots per inch: what positions are rounded to
constexpr double millimetresPerInch = 25.4;

PrintSystem::Outcome SavePdf(const QString& caption, const QByteArray& pdf) {
    platform::FileQuestion question;
    question.save = true;
    question.filter = "Fichiers PDF|*.pdf";
    question.folder = Settings::Read(Settings::LastSaved);
    question.proposedName = caption.toStdString();
    const std::string file = platform::TheHost().files->Ask(question);
    if (file.empty()) return PrintSystem::Outcome::Cancelled;
    // The PDF writer does not notice a full disk; this does.
    return platform::ReplaceFile(file, pdf.toStdString()) ? PrintSystem::Outcome::Accepted
                                                          : PrintSystem::Outcome::Failed;
}

PrintSystem::Outcome Print(const PrintedGrid& grid, const PrintChoice& choice) {
    const Settings::IniSnapshot settings;
    const PageInk ink{ColorTable::FromSettings(), choice.blackAndWhite};
    const QByteArray pdf = Printing::RenderPdf(grid, LayoutFromSettings(settings, choice.landscape), ink);
    if (pdf.isEmpty()) return PrintSystem::Outcome::Failed;
    if (choice.toFile) return SavePdf(grid.caption, pdf);
    return PrintSystem::Send(choice.printer, grid.caption, pdf, platform_qt::DialogOwner());
}

}  // namespace

namespace Printing {

void PrintGrid(const PrintedGrid& grid) {
    PrintChoice choice;
    {
        wPrinter dialog(grid, platform_qt::DialogOwner());
        dialog.exec();
        if (!dialog.Accepted()) return;
        choice = dialog.Choice();
    }
    if (Print(grid, choice) != PrintSystem::Outcome::Failed) return;
    platform::TheHost().messages->Show("Impossible d'initialiser l'imprimante.",
                                       platform::MessageStyle::Exclamation);
}

QByteArray RenderPdf(const PrintedGrid& grid, const PageLayout& page, const PageInk& ink) {
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(grid.caption);
    writer.setCreator(platform_qt::FromUtf8(platform::TheHost().application->Title()));
    writer.setResolution(pdfResolution);
    const bool landscape = page.paper.width() > page.paper.height();
    writer.setPageLayout(QPageLayout(
        QPageSize(QPageSize::A4), landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    QPainter painter;
    if (!painter.begin(&writer)) return {};
    PaintPage(painter, pdfResolution / millimetresPerInch, grid, page, ink);
    if (!painter.end()) return {};
    return pdf;
}

}  // namespace Printing
