#include "shell/window/window.h"

#include <QApplication>
#include <QPixmap>
#include <cstdlib>
#include <memory>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"
#include "shell/window/main_window.h"
#include "shell/window/panel_dock.h"
#include "shell/window/window_answers.h"

namespace {

// The one application object: made at the first use, with the program's name as its argument.
QApplication& Application() {
  static int argc = 1;
  static char name[] = "tarsa";
  static char* argv[] = {name, nullptr};
  if (!TsDisplayAvailable()) qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication application(argc, argv);
  return application;
}

}  // namespace

bool TsDisplayAvailable() {
  const char* platform = std::getenv("QT_QPA_PLATFORM");
  if (platform != nullptr && *platform != 0) return true;
  const char* x = std::getenv("DISPLAY");
  const char* wayland = std::getenv("WAYLAND_DISPLAY");
  return (x != nullptr && *x != 0) || (wayland != nullptr && *wayland != 0);
}

void TsRunCommandLineInWindow() {
  Application();
  TsMainWindow window;
  CTarsaCommandLine& command_line = CTarsaStandIn::CommandLine();
  // Pending output printed before the window existed is shown in it.
  window.Write(command_line.TakeOutput());
  command_line.SetWriter([&window](const std::wstring& text) { window.Write(text); });
  command_line.SetReader([&window](const std::wstring& prompt, std::wstring& line) {
    return window.Read(prompt, line);
  });
  command_line.SetEchoUserInput(false);
  IUserAnswers& before = UserAnswers();
  TsWindowAnswers answers(&window, *window.Dock());
  SetUserAnswers(&answers);
  window.show();
  command_line.ProcessInput();
  SetUserAnswers(&before);
  command_line.SetReader(nullptr);
  command_line.SetWriter(nullptr);
}

bool TsWriteWindowPicture(const std::string& path, const std::wstring& output,
                          std::wstring& error) {
  Application();
  TsMainWindow window;
  window.Write(output);
  window.Refresh();
  window.setAttribute(Qt::WA_DontShowOnScreen);
  window.show();
  QApplication::processEvents();
  if (window.grab().save(QString::fromStdString(path), "PNG")) return true;
  error = L"Could not write the picture " + ZK_wString::FromUtf8(path).Text() + L".";
  return false;
}
