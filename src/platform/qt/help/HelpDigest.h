// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace HelpDigest {

// Of the help file that was built with the program, see ChmFile::DigestOf. The build writes its source.
QByteArray BuiltIn();

}  // namespace HelpDigest
