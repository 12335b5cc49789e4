// SPDX-License-Identifier: MIT
#include "platform/qt/EndSignals.h"

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace platform_qt {

namespace {

constexpr std::array endings{SIGTERM, SIGHUP, SIGINT};
std::array<int, 2> channel{-1, -1};  // what a signal handler may do: write a byte

void OnSignal(int /*number*/) {
    const char byte = 0;
    static_cast<void>(write(channel[1], &byte, 1) == 1);
}

void Handle(int number, void (*handler)(int), unsigned flags = 0) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(flags);
    sigaction(number, &action, nullptr);
}

// Started by nohup, say.
bool IsIgnored(int number) {
    struct sigaction action {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

EndSignals::EndSignals() {
    // A handler, not SIG_IGN: programs that are started from here would inherit that.
    Handle(
        SIGXFSZ, [](int) {}, SA_RESTART);
    if (pipe2(channel.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* notifier = new QSocketNotifier(channel[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit Asked();
    });
    for (const int number : endings) {
        if (!IsIgnored(number)) Handle(number, OnSignal, SA_RESTART | SA_RESETHAND);
    }
}

EndSignals::~EndSignals() {
    for (const int number : endings) {
        if (!IsIgnored(number)) Handle(number, SIG_DFL);
    }
    for (int& end : channel) {
        if (end >= 0) close(std::exchange(end, -1));
    }
}

}  // namespace platform_qt
