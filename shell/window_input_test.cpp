#include "shell/window_input.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <sstream>

#include "host/tarsa/tarsa_dockbar.h"
#include "host/tarsa/tarsa_named_object_panel.h"
#include "panel/stances_panel.h"
#include "shell/front_end.h"
#include "testing/stance_document_test.h"

namespace {

using Dlg = CTsNamedDocObjectManagerDlg;
using Stances = CTsStancesManagerDlg;

// What a person may do in the window, with a number that picks among the like.
struct Deed {
  enum Kind { type, escape, choose, pick, end_picking, button, double_click, menu_item, menu };
  Kind kind;
  int n;
};

const wchar_t* const kLines[] = {L"List",  L"Move",  L"lid",      L"",     L"0,1,0", L"-Stance",
                                 L"_Save", L"Front", L"_Restore", L"Undo", L"Redo",  L"nonsense",
                                 L"Hide",  L"Show",  L"_Delete",  L"Back"};
const int kButtons[] = {Dlg::save_button,      Dlg::restore_button,    Dlg::delete_button,
                        Dlg::rename_button,    Stances::select_button, Stances::update_button,
                        Stances::append_button};
const wchar_t* const kMenuCommands[] = {L"_Undo", L"_Redo", L"_Stance"};

std::string Describe(const std::vector<Deed>& steps) {
  static const char* const names[] = {"type",   "escape",       "choose",    "pick", "end-pick",
                                      "button", "double-click", "menu-item", "menu"};
  std::ostringstream out;
  for (const Deed& step : steps) out << names[step.kind] << '(' << step.n << ") ";
  return out.str();
}

// The window's front end with a person who takes the given steps, one each time the command line
// waits, then makes sure it still takes a line, and closes the window.
class Person : public ITsFrontEnd, private IUserAnswers {
 public:
  Person(std::vector<Deed> steps, unsigned int seed, std::function<std::string()> model)
      : m_steps(std::move(steps)), m_random(seed), m_model(std::move(model)) {}

  void Idle() override { CTarsaStandIn::RunIdleWork(); }
  bool ReadLine(const std::wstring& prompt, std::wstring& line) override {
    return m_input.Read(prompt, line);
  }
  void Write(const std::wstring& text) override { m_output += text; }
  bool ShowsTyping() const override { return true; }
  IUserAnswers& Answers() override { return *this; }
  UnsavedChanges AskAboutChanges(const std::wstring&) override {
    return m_closing ? UnsavedChanges::discard : UnsavedChanges::cancel;
  }

  // What went wrong, or empty.
  const std::string& Failure() const { return m_failure; }

 private:
  // The command line waits with nothing left to take: the last step is checked, the next taken.
  void Next() {
    CTarsaStandIn::RunIdleWork();
    if (!m_inert_before.empty() && m_model() != m_inert_before && m_failure.empty()) {
      m_failure = "step " + std::to_string(m_at) + " changed the model";
    }
    m_inert_before.clear();
    if (m_at < m_steps.size()) {
      Take(m_steps[m_at++]);
      return;
    }
    // At the end: whatever waits is cancelled, and a typed line is taken.
    if (m_probe == 0 && m_input.Waiting() != L"Command:") {
      m_input.Escape();
      return;
    }
    if (m_probe++ == 0) {
      m_output.clear();
      m_input.Enter(L"Probe");
      return;
    }
    if (m_output != L"Command: Probe\nUnknown command: Probe\n" && m_failure.empty()) {
      m_failure = "the command line did not take a line";
    }
    m_closing = true;
    m_input.Close();
  }

  void Take(const Deed& step) {
    Dlg* panel = CTarsaStandIn::Panel(g_stances_panel_tab_id);
    const int items = panel ? panel->List().GetItemCount() : 0;
    switch (step.kind) {
      case Deed::type:
        m_input.Enter(kLines[step.n % std::size(kLines)]);
        // List at "Command:" changes nothing; elsewhere it may be a name.
        if (step.n % std::size(kLines) == 0 && m_input.Waiting() == L"Command:") {
          m_inert_before = m_model();
        }
        break;
      case Deed::escape:
        m_inert_before = m_model();
        m_input.Escape();
        break;
      case Deed::choose: {
        const auto& options = CTarsaStandIn::CommandLine().Question().options;
        if (options.empty()) return Next();
        const auto& option = options[static_cast<size_t>(step.n) % options.size()];
        m_input.Choose(m_input.Waiting(), option.word, option.shown);
        break;
      }
      case Deed::pick: {
        CTarsaDoc* doc = CTarsaStandIn::CommandLine().Document();
        std::vector<ZK_UUID> ids;
        CTarsaObjectIterator it(*doc);
        int i = 0;
        for (const CTarsaObject* object = it.First(); object; object = it.Next(), ++i) {
          if (i == step.n % 4) ids.push_back(object->ModelObjectId());
        }
        m_input.Pick(ids, step.n % 2 == 1);
        break;
      }
      case Deed::end_picking:
        m_input.EndPicking();
        break;
      case Deed::button:
        OnPanel([control = kButtons[step.n % std::size(kButtons)]](Dlg& open) {
          CTarsaStandIn::Click(open, control);
        });
        break;
      case Deed::double_click:
        if (items == 0) return Next();
        OnPanel([row = step.n % items](Dlg& open) { CTarsaStandIn::DoubleClick(open, row); });
        break;
      case Deed::menu_item:
        OnPanel([](Dlg& open) { CTarsaStandIn::ContextMenu(open, POINT{10, 10}); });
        break;
      case Deed::menu:
        m_input.Act([command = kMenuCommands[step.n % std::size(kMenuCommands)]] {
          CTarsaStandIn::CommandLine().RunScript(command, 0);
        });
        break;
    }
  }

  // An action on the Stances panel, if it is still open when the command line takes the action.
  void OnPanel(std::function<void(Dlg&)> action) {
    m_input.Act([action] {
      if (Dlg* open = CTarsaStandIn::Panel(g_stances_panel_tab_id)) action(*open);
    });
  }

  // The questions of panels, answered at random.
  UINT ChooseMenuItem(HMENU menu, POINT, HWND) override {
    const std::vector<TsMenuItem> items = TsMenuItems(menu);
    const TsMenuItem& item = items[m_random() % items.size()];
    return item.separator || m_random() % 5 == 0 ? 0 : item.id;
  }
  bool AskText(const std::wstring&, const std::wstring&, const std::wstring& proposed,
               std::wstring& text) override {
    const unsigned int choice = m_random() % 4;
    text = choice == 0 ? L"Front" : choice == 1 ? L"Back" : proposed;
    return choice != 3;
  }
  bool AskYesNo(const std::wstring&, const std::wstring&) override { return m_random() % 2 == 0; }
  bool EditLabel(HWND, int, const std::wstring&, std::wstring& text) override {
    text = m_random() % 2 ? L"Back" : L"front";
    return m_random() % 3 != 0;
  }

  std::vector<Deed> m_steps;
  std::mt19937 m_random;
  std::function<std::string()> m_model;
  TsWindowInput m_input{{[this] { Next(); }, [](const std::wstring&) {},
                         [this](const std::wstring& text) { Write(text); }}};
  std::wstring m_output;
  std::string m_inert_before;
  std::string m_failure;
  size_t m_at = 0;
  int m_probe = 0;
  bool m_closing = false;
};

// Random sequences of what a person does in the window, on a small model with the Stances panel
// open. After every step the command line waits for input again; Escape and List change nothing;
// and at the end, once Escape cancelled whatever waited, a typed line is taken. A failure names its
// seed and its shortest failing sequence. KORVO_SOAK=N runs N sequences instead of 200.
class WindowSoakTest : public StanceDocumentTest {
 protected:
  // The model as a text: every object's place, name and state, and the stances.
  std::string Model() const {
    std::ostringstream out;
    for (const ZK_UUID& id : AllObjects()) {
      out << ZK_UuidToString(id).ToUtf8() << Object(id)->Attributes().m_name.ToUtf8();
      for (const ZK_3dPoint& p : Placement(id)) out << ' ' << p.x << ',' << p.y << ',' << p.z;
      out << ' ' << static_cast<int>(Object(id)->Attributes().m_mode) << '\n';
    }
    for (auto* stance = Table().FirstEntry(); stance; stance = Table().NextEntry()) {
      out << stance->m_name.ToUtf8() << '\n';
    }
    return out.str();
  }
  std::string Run(const std::vector<Deed>& steps, unsigned int seed) {
    CTarsaStandIn::Reset();
    StanceDocumentTest::SetUp();
    const ZK_UUID lid = AddNamed(L"lid");
    const ZK_UUID base = AddNamed(L"base");
    Move(base, ZK_Xform::Translation(3, 0, 0));
    Save(L"Front", {lid, base});
    TarsaUiOpenDockbarTab(g_stances_panel_tab_id);
    Person person(steps, seed, [this] { return Model(); });
    {
      const TsFrontEndScope installed(person);
      CTarsaStandIn::CommandLine().ProcessInput();
    }
    CTarsaStandIn::CommandLine().TakeOutput();
    CTarsaStandIn::TakeMessageBoxes();
    return person.Failure();
  }
};

TEST_F(WindowSoakTest, TheCommandLineTakesALineWhateverThePersonDid) {
  const char* asked = std::getenv("KORVO_SOAK");
  const int sequences = asked ? std::atoi(asked) : 200;
  for (int seed = 1; seed <= sequences; ++seed) {
    std::mt19937 random(static_cast<unsigned int>(seed));
    std::vector<Deed> steps(25);
    for (Deed& step : steps) {
      step = {static_cast<Deed::Kind>(random() % 9), static_cast<int>(random() % 64)};
    }
    std::string failure = Run(steps, static_cast<unsigned int>(seed));
    if (failure.empty()) continue;
    // The shortest sequence that still fails: drop steps one at a time while it does.
    for (size_t i = steps.size(); i-- > 0;) {
      std::vector<Deed> shorter;
      for (size_t j = 0; j < steps.size(); ++j) {
        if (j != i) shorter.push_back(steps[j]);
      }
      const std::string still = Run(shorter, static_cast<unsigned int>(seed));
      if (!still.empty()) {
        steps = shorter;
        failure = still;
      }
    }
    FAIL() << "seed " << seed << ": " << failure << "\n  steps: " << Describe(steps);
  }
}

}  // namespace
