// What the window's tests share: the one application object on Qt's offscreen platform, waiting
// for what a test expects without sleeping, keys pressed on a widget, and the user's part in a
// modal step (a menu, a dialog, an editor) that the next action shows and waits on.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

// The application of a test program, on the offscreen platform: made before the first test and
// destroyed after the last, before the program's exit, while the toolkit's own statics live.
class TestApplication : public testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    m_application = std::make_unique<QApplication>(m_argc, m_argv);
  }
  void TearDown() override { m_application.reset(); }

 private:
  int m_argc = 1;
  char m_name[12] = "window_test";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QApplication> m_application;
};
inline testing::Environment* const kTestApplication =
    testing::AddGlobalTestEnvironment(new TestApplication);

// Runs the window's events until `done` holds, for at most five seconds: false when it never did.
inline bool Eventually(const std::function<bool()>& done) {
  QElapsedTimer timer;
  timer.start();
  while (!done()) {
    if (timer.elapsed() > 5000) return false;
    QApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  return true;
}

inline void Press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers);
  QApplication::sendEvent(widget, &press);
}

// The user's part in what the next action shows: Then(step) tries `step` every few milliseconds
// while the action waits for the user, until the step finds what it looks for, answers it and
// returns true. A step may set the next one with Then.
class UserSteps {
 public:
  UserSteps() {
    m_timer.setInterval(5);
    QObject::connect(&m_timer, &QTimer::timeout, [this] {
      m_replaced = false;
      const std::function<bool()> step = m_step;  // the step may replace itself
      if (step && step() && !m_replaced) m_timer.stop();
    });
  }
  void Then(std::function<bool()> step) {
    m_step = std::move(step);
    m_replaced = true;
    m_timer.start();
  }
  void Stop() { m_timer.stop(); }

 private:
  QTimer m_timer;
  std::function<bool()> m_step;
  bool m_replaced = false;
};
