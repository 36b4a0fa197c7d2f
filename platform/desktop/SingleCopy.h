// SPDX-License-Identifier: GPL-3.0-or-later
// One copy of the program per folder. The copy that holds the folder listens for later ones; a
// later copy asks it to bring its main window to the front, and ends without touching the folder.
#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

namespace desk {

class DesktopScreen;

// For a copy that found its folder held: asks the running copy to come to the front. 0 when it
// did; 1, with a line on standard error, when it did not answer within five seconds.
int BringRunningCopyToFront();

// The running copy's side: while it lives, each later copy's request brings the main window to the
// front (and a modal window that is open in front of it).
class RunningCopy : public QObject {
 public:
  explicit RunningCopy(DesktopScreen& screen);
  ~RunningCopy() override;

 private:
  void Answer();
  DesktopScreen& screen_;
  int listening_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace desk
