#include "shell/window/window.h"

#include <QApplication>
#include <QPixmap>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"
#include "shell/window/main_window.h"

namespace {

// The toolkit's own notes (a missing runtime folder, fonts it looked for) are not the user's
// business: only its critical messages reach the terminal.
void QuietToolkit(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "tarsa: %s\n", message.toLocal8Bit().constData());
  }
}

// Chooses the offscreen platform when there is no display: true when it did.
bool ChoosePlatform() {
  if (TsDisplayAvailable()) return false;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return true;
}

// The application object for the time the window is used, with the program's name as its
// argument. It goes before the program's exit, while the toolkit's own statics still live.
class ApplicationScope {
 public:
  ApplicationScope() = default;
  ~ApplicationScope() { qInstallMessageHandler(m_handler); }
  ApplicationScope(const ApplicationScope&) = delete;
  ApplicationScope& operator=(const ApplicationScope&) = delete;

 private:
  int m_argc = 1;
  char m_name[6] = "tarsa";
  char* m_argv[2] = {m_name, nullptr};
  QtMessageHandler m_handler = qInstallMessageHandler(QuietToolkit);
  bool m_offscreen = ChoosePlatform();
  QApplication m_application{m_argc, m_argv};
};

}  // namespace

bool TsDisplayAvailable() {
  const char* platform = std::getenv("QT_QPA_PLATFORM");
  if (platform != nullptr && *platform != 0) return true;
  const char* x = std::getenv("DISPLAY");
  const char* wayland = std::getenv("WAYLAND_DISPLAY");
  return (x != nullptr && *x != 0) || (wayland != nullptr && *wayland != 0);
}

int TsRunInWindow(const std::function<int(ITsFrontEnd&)>& run) {
  const ApplicationScope application;
  TsMainWindow window;
  CTarsaStandIn::OpenEveryPanel();
  window.Idle();
  window.show();
  return run(window);
}

bool TsWriteWindowPicture(const std::string& path, const std::wstring& output,
                          std::wstring& error) {
  const ApplicationScope application;
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
