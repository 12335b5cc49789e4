#pragma once

#include <QByteArray>

// The mark by which a damaged help file is told from a whole one. The format has no checksum, and its reader
// library trusts what it reads: a wrong byte may end in a division by zero or an endless loop. The mark takes
// the place of the remark that the compiler leaves in every file, so the file stays what it is to others.
namespace HelpSeal {

// Writes the mark into a freshly compiled file. False if there is no remark to put it into.
bool Put(QByteArray& file);

// True if the file carries the mark and is, byte for byte, the one that got it.
bool IsWhole(const QByteArray& file);

}  // namespace HelpSeal
