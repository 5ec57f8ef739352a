#include "shell/window_input.h"

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_doc.h"

namespace {

CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }

// The objects' ids as one answer of an object prompt, and their names as the user sees them.
void Describe(const std::vector<ZK_UUID>& objects, std::wstring& ids, std::wstring& names) {
  CTarsaDoc* doc = CommandLine().Document();
  for (const ZK_UUID& id : objects) {
    const CTarsaObject* object = doc ? doc->LookupObject(id) : nullptr;
    if (object == nullptr) continue;
    ids += (ids.empty() ? L"" : L" ") + std::wstring(ZK_UuidToString(id).Text());
    const std::wstring name = object->Attributes().m_name.Text();
    names += (names.empty() ? L"" : L", ") + (name.empty() ? std::wstring(L"(unnamed)") : name);
  }
}

}  // namespace

void TsWindowInput::Enter(const std::wstring& line) {
  m_events.push_back({Kind::line, line, line, L"", {}, false, nullptr});
}

void TsWindowInput::Choose(const std::wstring& prompt, const std::wstring& word,
                           const std::wstring& shown) {
  m_events.push_back({Kind::line, word, shown, prompt, {}, false, nullptr});
}

void TsWindowInput::Escape() {
  // "!" cancels the command, whichever of its prompts asks.
  m_events.push_back({Kind::escape, L"!", L"(cancelled)", L"", {}, false, nullptr});
}

void TsWindowInput::Pick(const std::vector<ZK_UUID>& objects, bool add) {
  m_events.push_back({Kind::pick, L"", L"", L"", objects, add, nullptr});
}

void TsWindowInput::EndPicking() {
  m_events.push_back({Kind::end_picking, L"", L"", L"", {}, false, nullptr});
}

void TsWindowInput::Act(std::function<void()> action) {
  m_events.push_back({Kind::action, L"", L"", L"", {}, false, std::move(action)});
}

void TsWindowInput::Close() {
  Act([] { CommandLine().RunScript(L"_Exit", 0); });
}

bool TsWindowInput::Read(const std::wstring& prompt, std::wstring& line) {
  for (;;) {
    if (CommandLine().InputEnded()) return false;
    m_waiting = prompt;
    if (m_events.empty()) {
      m_hooks.show(prompt);
      m_hooks.wait();
      continue;
    }
    Event event = std::move(m_events.front());
    m_events.pop_front();
    if (event.kind == Kind::action) {
      m_waiting.clear();
      if (CommandLine().RunningCommand() != nullptr) {
        CommandLine().RunWhenNoCommand(std::move(event.action));
        return false;
      }
      event.action();
      continue;
    }
    if (!Answer(event, prompt, line)) continue;
    m_waiting.clear();
    m_hooks.write(prompt + (event.shown.empty() ? L"" : L" " + event.shown) + L"\n");
    return true;
  }
}

bool TsWindowInput::Answer(Event& event, const std::wstring& prompt, std::wstring& line) {
  const bool objects = CommandLine().Question().objects;
  switch (event.kind) {
    case Kind::line:
      // An option clicked for a prompt that has gone answers nothing.
      if (!event.prompt.empty() && event.prompt != prompt) return false;
      break;
    case Kind::escape:
      if (CommandLine().RunningCommand() == nullptr) return false;
      break;
    case Kind::pick:
      if (!objects) {
        Select(event.objects, event.add);
        return false;
      }
      Describe(event.objects, event.line, event.shown);
      if (event.line.empty()) return false;
      break;
    case Kind::end_picking:
      if (!objects) return false;
      break;
    case Kind::action:
      return false;
  }
  line = event.line;
  return true;
}

void TsWindowInput::Select(const std::vector<ZK_UUID>& objects, bool add) {
  CTarsaDoc* doc = CommandLine().Document();
  if (doc == nullptr) return;
  if (!add) doc->UnselectAll();
  for (const ZK_UUID& id : objects) {
    if (const CTarsaObject* object = doc->LookupObject(id)) {
      object->Select(!(add && object->IsSelected()));
    }
  }
}
