// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

struct PageInk;
struct PageLayout;
struct PrintedGrid;

namespace Printing {

// Asks for the printer and prints on it, or into the file that is asked for then. Reports a failure itself;
// nothing half-written is left.
void PrintGrid(const PrintedGrid& grid);

// The page as a PDF document; empty when it could not be made.
QByteArray RenderPdf(const PrintedGrid& grid, const PageLayout& page, const PageInk& ink);

}  // namespace Printing
