#include "host/tarsa/tarsa_get.h"

#include <algorithm>

#include "host/tarsa/standin/tarsa_standin.h"

namespace {

CTarsaCommandLine& CommandLine() { return CTarsaStandIn::CommandLine(); }

// Tells the command line what the prompt offers while it asks, and restores what was there.
class QuestionScope {
 public:
  explicit QuestionScope(CTarsaQuestion question)
      : m_before(CommandLine().SetQuestion(std::move(question))) {}
  ~QuestionScope() { CommandLine().SetQuestion(std::move(m_before)); }
  QuestionScope(const QuestionScope&) = delete;
  QuestionScope& operator=(const QuestionScope&) = delete;

 private:
  CTarsaQuestion m_before;
};

// The span of one question, all of its answers, for the command line.
class WholeQuestionScope {
 public:
  WholeQuestionScope() { CommandLine().BeginQuestion(); }
  ~WholeQuestionScope() { CommandLine().EndQuestion(); }
  WholeQuestionScope(const WholeQuestionScope&) = delete;
  WholeQuestionScope& operator=(const WholeQuestionScope&) = delete;
};

bool SameText(const std::wstring& a, const wchar_t* b) {
  return ZK_wString(a).CompareNoCase(b) == 0;
}

// `text` is a name of any length: it is measured first, so that a word longer than every name
// never reads past one.
bool StartsWith(const wchar_t* text, const std::wstring& start) {
  const std::wstring name = text ? text : L"";
  if (start.empty() || start.size() > name.size()) return false;
  return ZK_wString(name.substr(0, start.size())).CompareNoCase(start.c_str()) == 0;
}

// The index of the one name `word` picks: "_English" exactly, else a local name exactly, else
// the one local name it begins. -1 when it picks none or is ambiguous.
template <class Names>
int Match(const std::wstring& word, const Names& names) {
  const int count = static_cast<int>(names.size());
  if (!word.empty() && word[0] == L'_') {
    for (int i = 0; i < count; ++i) {
      if (SameText(word.substr(1), names[i].first)) return i;
    }
    return -1;
  }
  for (int i = 0; i < count; ++i) {
    if (SameText(word, names[i].second)) return i;
  }
  int found = -1;
  for (int i = 0; i < count; ++i) {
    if (!StartsWith(names[i].second, word)) continue;
    if (found >= 0) return -1;
    found = i;
  }
  return found;
}

}  // namespace

// CTarsaGet

int CTarsaGet::AddCommandOption(const CTarsaCommandOptionName& name,
                                const CTarsaCommandOptionValue& value, bool hidden) {
  m_options.push_back(Entry{name, value, {}, 0, hidden});
  return static_cast<int>(m_options.size());
}

int CTarsaGet::AddCommandOptionList(
    const CTarsaCommandOptionName& name, int current_index, const CTarsaCommandOptionValue& value0,
    const CTarsaCommandOptionValue& value1, const CTarsaCommandOptionValue& value2,
    const CTarsaCommandOptionValue& value3, const CTarsaCommandOptionValue& value4,
    const CTarsaCommandOptionValue& value5, const CTarsaCommandOptionValue& value6,
    const CTarsaCommandOptionValue& value7, const CTarsaCommandOptionValue& value8,
    const CTarsaCommandOptionValue& value9) {
  Entry entry{name, Empty(), {}, 0, false};
  for (const CTarsaCommandOptionValue* value :
       {&value0, &value1, &value2, &value3, &value4, &value5, &value6, &value7, &value8, &value9}) {
    if (!value->IsEmpty()) entry.list.push_back(*value);
  }
  const int count = static_cast<int>(entry.list.size());
  entry.current = std::max(0, std::min(current_index, count - 1));
  m_options.push_back(entry);
  return static_cast<int>(m_options.size());
}

const CTarsaCommandOption* CTarsaGet::Option() const {
  return m_result == option ? &m_picked : nullptr;
}

CTarsaGet::result CTarsaGet::Ask() {
  m_result = no_result;
  m_string.clear();
  const WholeQuestionScope question;
  for (;;) {
    const QuestionScope asking(Question());
    const CTarsaToken token = CommandLine().Ask(PromptLine());
    switch (token.kind) {
      case CTarsaToken::escape:
        return m_result = cancel;
      case CTarsaToken::enter:
        if (TakeEnter()) return m_result;
        break;
      case CTarsaToken::text: {
        const Pick pick = token.quoted ? Pick::none : PickOption(token);
        if (pick == Pick::picked) return m_result = option;
        if (pick == Pick::cancelled) return m_result = cancel;
        if (TakeText(token)) return m_result;
        break;
      }
      default:
        break;
    }
  }
}

bool CTarsaGet::TakeEnter() {
  if (!m_accept_nothing) return false;
  m_result = nothing;
  return true;
}

bool CTarsaGet::TakeText(const CTarsaToken& token) {
  CommandLine().Print(L"Unknown option: " + token.word + L"\n");
  return false;
}

std::wstring CTarsaGet::PromptLine() const {
  std::wstring line = m_prompt;
  std::wstring shown;
  for (const CTarsaQuestion::Option& option : Question().options) shown += L" " + option.shown;
  if (!shown.empty()) line += L" (" + shown + L" )";
  return line + L":";
}

CTarsaQuestion CTarsaGet::Question() const {
  CTarsaQuestion question;
  question.objects = PicksObjects();
  question.picked = PickedObjects();
  for (const Entry& entry : m_options) {
    if (entry.hidden) continue;
    std::wstring shown = entry.name.LocalName();
    const CTarsaCommandOptionValue& value =
        entry.list.empty() ? entry.value : entry.list[entry.current];
    if (!value.IsEmpty()) shown += std::wstring(L"=") + value.LocalValue();
    question.options.push_back({shown, std::wstring(L"_") + entry.name.EnglishName()});
  }
  return question;
}

CTarsaGet::Pick CTarsaGet::PickOption(const CTarsaToken& token) {
  const size_t equals = token.word.find(L'=');
  const std::wstring name = token.word.substr(0, equals);
  std::vector<std::pair<const wchar_t*, const wchar_t*>> names;
  for (const Entry& entry : m_options)
    names.emplace_back(entry.name.EnglishName(), entry.name.LocalName());
  const int index = Match(name, names);
  if (index < 0) return Pick::none;
  Entry& entry = m_options[static_cast<size_t>(index)];
  if (!entry.list.empty()) {
    if (equals != std::wstring::npos) {
      if (!PickValue(entry, token.word.substr(equals + 1))) return Pick::none;
    } else {
      for (;;) {
        std::wstring question = std::wstring(entry.name.LocalName()) + L" <" +
                                entry.list[entry.current].LocalValue() + L"> (";
        for (const auto& value : entry.list) question += std::wstring(L" ") + value.LocalValue();
        const CTarsaToken answer = CommandLine().Ask(question + L" ):");
        if (answer.kind == CTarsaToken::escape) return Pick::cancelled;
        if (answer.kind == CTarsaToken::enter) break;
        if (answer.kind == CTarsaToken::text && PickValue(entry, answer.word)) break;
        if (answer.kind == CTarsaToken::text)
          CommandLine().Print(L"Unknown value: " + answer.word + L"\n");
      }
    }
  }
  m_picked.m_option_index = index + 1;
  m_picked.m_list_option_current = entry.current;
  return Pick::picked;
}

bool CTarsaGet::PickValue(Entry& entry, const std::wstring& word) {
  std::vector<std::pair<const wchar_t*, const wchar_t*>> values;
  for (const auto& value : entry.list)
    values.emplace_back(value.EnglishValue(), value.LocalValue());
  const int index = Match(word, values);
  if (index < 0) return false;
  entry.current = index;
  return true;
}

// CTarsaGetString

bool CTarsaGetString::TakeEnter() {
  if (CTarsaGet::TakeEnter()) return true;
  m_result = string;
  return true;
}

bool CTarsaGetString::TakeText(const CTarsaToken& token) {
  m_string = token.word;
  m_result = string;
  return true;
}

// CTarsaGetObject

void CTarsaGetObject::EnablePreSelect(bool enable, bool) { m_preselect = enable; }

CTarsaGet::result CTarsaGetObject::GetObjects(int minimum, int maximum) {
  Clear();
  m_minimum = std::max(1, minimum);
  m_maximum = std::max(0, maximum);
  CTarsaDoc* doc = CommandLine().Document();
  if (m_preselect && doc != nullptr) {
    CTarsaObjectIterator it(*doc);
    it.IncludeLights(true);
    // The walk visits each object once, so the selection needs no check for objects picked twice.
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      if (object->IsSelected()) m_objects.push_back(object);
    }
    if (ObjectCount() >= m_minimum) {
      CommandLine().PassOverPause();
      return m_result = object;
    }
    Clear();
  }
  return Ask();
}

CTarsaObjRef CTarsaGetObject::Object(int index) const {
  return CTarsaObjRef(index >= 0 && index < ObjectCount() ? m_objects[static_cast<size_t>(index)]
                                                          : nullptr);
}

bool CTarsaGetObject::TakeEnter() {
  if (ObjectCount() >= m_minimum) {
    m_result = object;
    return true;
  }
  Clear();
  // Enter with nothing picked ends the picking as cancelling does, rather than asking forever.
  if (!CTarsaGet::TakeEnter()) m_result = cancel;
  return true;
}

bool CTarsaGetObject::TakeText(const CTarsaToken& token) {
  CTarsaDoc* doc = CommandLine().Document();
  const int before = ObjectCount();
  if (doc != nullptr && !token.word.empty()) {
    const ZK_UUID id = ZK_UuidFromString(token.word.c_str());
    CTarsaObjectIterator it(*doc, CTarsaObject::normal_object);
    it.IncludeLights(true);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      const bool named = ZK_UuidIsNil(id)
                             ? object->Attributes().m_name.CompareNoCase(token.word.c_str()) == 0
                             : object->ModelObjectId() == id;
      if (named) Pick(object);
    }
  }
  if (ObjectCount() == before) CommandLine().Print(L"No object named " + token.word + L".\n");
  if (m_maximum > 0 && ObjectCount() >= m_maximum) {
    m_result = object;
    return true;
  }
  return false;
}

std::vector<ZK_UUID> CTarsaGetObject::PickedObjects() const {
  std::vector<ZK_UUID> ids;
  for (const CTarsaObject* object : m_objects) ids.push_back(object->ModelObjectId());
  return ids;
}

void CTarsaGetObject::Pick(const CTarsaObject* object) {
  if (m_picked_objects.insert(object).second) m_objects.push_back(object);
}

void CTarsaGetObject::Clear() {
  m_objects.clear();
  m_picked_objects.clear();
}
