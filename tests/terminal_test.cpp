// The program at a terminal: `tarsa` runs in a pseudo-terminal of the test's own, and the test
// types keys as a person does (Escape, Ctrl-C, Ctrl-D and Tab are keys here, not calls) and reads
// what the terminal shows.
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

const char* Program() { return TARSA_PROGRAM; }

// tarsa on a terminal of its own, in an empty folder, with a history of its own.
class Terminal {
 public:
  Terminal() {
    m_folder = testing::TempDir() + "terminal_XXXXXX";
    EXPECT_NE(mkdtemp(m_folder.data()), nullptr);
    m_pid = forkpty(&m_fd, nullptr, nullptr, nullptr);
    if (m_pid == 0) {
      if (chdir(m_folder.c_str()) != 0) _exit(127);
      setenv("HOME", m_folder.c_str(), 1);
      for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(name);
      execl(Program(), Program(), "--uuid-seed", "1", static_cast<char*>(nullptr));
      _exit(127);
    }
  }
  ~Terminal() {
    if (m_pid > 0 && !m_ended) {
      kill(m_pid, SIGKILL);
      waitpid(m_pid, nullptr, 0);
    }
    if (m_fd >= 0) close(m_fd);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  void Type(const std::string& keys) {
    EXPECT_EQ(write(m_fd, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }
  // Reads until the screen shows `text` after what was awaited before, for at most five
  // seconds: false when it never did.
  bool Await(const std::string& text) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    for (;;) {
      const size_t found = m_shown.find(text, m_seen);
      if (found != std::string::npos) {
        m_seen = found + text.size();
        return true;
      }
      if (std::chrono::steady_clock::now() > deadline || !ReadSome()) return false;
    }
  }
  // The program's exit status once it ended by itself within five seconds, else -1.
  int Status() {
    for (int i = 0; i < 500; ++i) {
      int status = 0;
      if (waitpid(m_pid, &status, WNOHANG) == m_pid) {
        m_ended = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
      }
      ReadSome();
      usleep(10000);
    }
    return -1;
  }
  const std::string& Shown() const { return m_shown; }

 private:
  bool ReadSome() {
    pollfd ready{m_fd, POLLIN, 0};
    if (poll(&ready, 1, 100) < 0) return false;
    if ((ready.revents & POLLIN) == 0) return (ready.revents & (POLLHUP | POLLERR)) == 0;
    char buffer[4096];
    const ssize_t n = read(m_fd, buffer, sizeof buffer);
    if (n <= 0) return false;
    m_shown.append(buffer, static_cast<size_t>(n));
    return true;
  }

  std::string m_folder;
  pid_t m_pid = -1;
  int m_fd = -1;
  bool m_ended = false;
  std::string m_shown;
  size_t m_seen = 0;
};

const char kEscape[] = "\x1b";
const char kUp[] = "\x1b[A";

TEST(TerminalKeys, CancelClearCompleteRecallAndExitAsAModellingHostsCommandLineDoes) {
  Terminal terminal;
  ASSERT_TRUE(terminal.Await("Command: "));
  terminal.Type("Box lid 0,0,0 1,1,1\r");
  ASSERT_TRUE(terminal.Await("Command: "));
  // Escape cancels the command at once and the key after it is typed, not taken.
  terminal.Type("Move\r");
  ASSERT_TRUE(terminal.Await("Select objects: "));
  terminal.Type(std::string(kEscape) + "Lis");
  ASSERT_TRUE(terminal.Await("(cancelled)\r\n"));
  // Tab completes "Lis", listing the choices; Ctrl-C at Command: clears the line.
  terminal.Type("\t");
  ASSERT_TRUE(terminal.Await("List  ListStances"));
  terminal.Type("\x03");
  ASSERT_TRUE(terminal.Await("^C\r\n"));
  // Enter at an object prompt with nothing picked ends it; Ctrl-C cancels a command's prompt.
  terminal.Type("Move\r");
  ASSERT_TRUE(terminal.Await("Select objects: "));
  terminal.Type("\r");
  ASSERT_TRUE(terminal.Await("Command: "));
  terminal.Type("Move lid\r");
  ASSERT_TRUE(terminal.Await("Select objects: "));
  terminal.Type("\x03");
  ASSERT_TRUE(terminal.Await("^C\r\n"));
  // Up with text typed recalls the last line that starts with it.
  terminal.Type(std::string("Bo") + kUp + "\x15" + "Hel\t");
  ASSERT_TRUE(terminal.Await("Command: Box lid 0,0,0 1,1,1"));
  ASSERT_TRUE(terminal.Await("Command: Help "));
  terminal.Type("\x15");
  // Ctrl-D is Exit, which asks about the unsaved box: Cancel keeps the program, Discard ends it.
  terminal.Type("\x04");
  ASSERT_TRUE(terminal.Await("Save the changes to Untitled? <Save> ( Save Discard Cancel ): "));
  terminal.Type("Cancel\r");
  ASSERT_TRUE(terminal.Await("Command: "));
  terminal.Type("\x04");
  ASSERT_TRUE(terminal.Await("( Save Discard Cancel ): "));
  terminal.Type("Discard\r");
  EXPECT_EQ(terminal.Status(), 0);
}

// Random keys at random moments. After each, Escape and a typed line: the line is always taken.
// A failure names its seed and its shortest failing sequence. KORVO_SOAK=N types N keys a run.
TEST(TerminalKeys, TheCommandLineTakesALineWhateverKeysCameBefore) {
  const char* asked = std::getenv("KORVO_SOAK");
  const int count = asked ? std::atoi(asked) : 60;
  const std::vector<std::string> keys = {kEscape,  "\x03",    "\t",        kUp,       "\x1b[B",
                                         "\r",     "\x04",    "\x15",      "List\r",  "Move\r",
                                         "lid\r",  "0,1,0\r", "-Stance\r", "_Save\r", "Front\r",
                                         "Undo\r", "Hide\r",  "Show\r",    "Mo",      "\x1b[D"};
  // Types the keys: 0 when every probe was answered, else the number of the key after which one
  // was not.
  const auto run = [&keys](const std::vector<size_t>& typed) -> size_t {
    Terminal terminal;
    if (!terminal.Await("Command: ")) return 1;
    terminal.Type("Box lid 0,0,0 1,1,1\r");
    for (size_t i = 0; i < typed.size(); ++i) {
      terminal.Type(keys[typed[i]]);
      terminal.Type(std::string(kEscape) + "Probe\r");
      if (!terminal.Await("Unknown command: Probe")) return i + 1;
    }
    return 0;
  };
  std::mt19937 random(7);
  std::vector<size_t> typed(static_cast<size_t>(count));
  for (size_t& key : typed) key = random() % keys.size();
  size_t failed = run(typed);
  if (failed == 0) return;
  typed.resize(failed);
  for (size_t i = typed.size() - 1; i-- > 0;) {
    std::vector<size_t> shorter;
    for (size_t j = 0; j < typed.size(); ++j) {
      if (j != i) shorter.push_back(typed[j]);
    }
    if (run(shorter) != 0) typed = shorter;
  }
  std::ostringstream steps;
  for (const size_t key : typed) steps << testing::PrintToString(keys[key]) << ' ';
  FAIL() << "seed 7: a typed line was not taken after " << steps.str();
}

}  // namespace
