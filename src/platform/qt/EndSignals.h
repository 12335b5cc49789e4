// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace platform_qt {

// The system's wishes that the process should end - a logout, a shutdown, a terminal that goes - as a signal
// in the event loop. The second wish ends the process at once. Needs a QCoreApplication; there is one at a
// time. For as long as the process lives, a write beyond its limit of file sizes fails like any other write
// instead of ending it.
class EndSignals : public QObject {
    Q_OBJECT

  public:
    EndSignals();
    ~EndSignals() override;

  signals:
    void Asked();
};

}  // namespace platform_qt
