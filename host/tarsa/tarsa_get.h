// The host's command-line prompts. A command builds one for each question, sets its prompt and
// options, asks, and reads the answer. Answers come from the command line (CTarsaCommandLine):
// an option is picked by its English name with a leading "_", or by its local name or a unique
// beginning of it, ignoring letter case; a list option's value likewise, as "Name=Value" or as
// the answer to the question that follows the option's name. Each prompt is shown as
// "Prompt ( Option Option=Value ):" followed by the answer.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "host/tarsa/tarsa_doc.h"
#include "host/tarsa/tarsa_localize.h"

struct CTarsaQuestion;
struct CTarsaToken;

// The option a user picked.
class CTarsaCommandOption {
 public:
  int m_option_index = 0;         // as AddCommandOption or AddCommandOptionList returned it
  int m_list_option_current = 0;  // a list option: the index of the chosen value
};

class CTarsaGet {
 public:
  enum result {
    no_result = 0,
    cancel = 1,
    nothing = 2,
    option = 3,
    number = 4,
    point = 8,
    object = 12,
    string = 13,
  };

  CTarsaGet() = default;
  CTarsaGet(const CTarsaGet&) = delete;
  CTarsaGet& operator=(const CTarsaGet&) = delete;
  virtual ~CTarsaGet() = default;

  // With nothing accepted, Enter alone answers the prompt with the result nothing.
  void AcceptNothing(bool enable = true) { m_accept_nothing = enable; }
  void SetCommandPrompt(const wchar_t* prompt) { m_prompt = prompt ? prompt : L""; }
  // Adds an option shown after the prompt: its index (from 1), by which Option() names it.
  int AddCommandOption(const CTarsaCommandOptionName& name,
                       const CTarsaCommandOptionValue& value = CTarsaCommandOptionValue(nullptr,
                                                                                        nullptr),
                       bool hidden = false);
  // Adds an option whose value is one of up to ten values (empty ones are left out), showing the
  // value at `current_index`: its index.
  int AddCommandOptionList(const CTarsaCommandOptionName& name, int current_index,
                           const CTarsaCommandOptionValue& value0,
                           const CTarsaCommandOptionValue& value1 = Empty(),
                           const CTarsaCommandOptionValue& value2 = Empty(),
                           const CTarsaCommandOptionValue& value3 = Empty(),
                           const CTarsaCommandOptionValue& value4 = Empty(),
                           const CTarsaCommandOptionValue& value5 = Empty(),
                           const CTarsaCommandOptionValue& value6 = Empty(),
                           const CTarsaCommandOptionValue& value7 = Empty(),
                           const CTarsaCommandOptionValue& value8 = Empty(),
                           const CTarsaCommandOptionValue& value9 = Empty());
  void ClearCommandOptions() { m_options.clear(); }

  result Result() const { return m_result; }
  // The picked option when the result is option, else null. The prompt keeps it.
  const CTarsaCommandOption* Option() const;
  // The text entered when the result is string.
  const wchar_t* String() const { return m_string.c_str(); }

 protected:
  // Asks until an answer ends the question, and returns the result.
  result Ask();
  // What Enter and a text that is no option mean to this kind of prompt: true when the answer
  // ends the question (m_result set), false to ask again.
  virtual bool TakeEnter();
  virtual bool TakeText(const CTarsaToken& token);
  // Whether the prompt takes objects picked by their ids, and the ids of those picked so far.
  virtual bool PicksObjects() const { return false; }
  virtual std::vector<ZK_UUID> PickedObjects() const { return {}; }

  result m_result = no_result;
  bool m_accept_nothing = false;
  std::wstring m_string;

 private:
  struct Entry {
    CTarsaCommandOptionName name;
    CTarsaCommandOptionValue value;
    std::vector<CTarsaCommandOptionValue> list;
    int current = 0;
    bool hidden = false;
  };
  enum class Pick { none, picked, cancelled };

  static CTarsaCommandOptionValue Empty() { return CTarsaCommandOptionValue(nullptr, nullptr); }
  std::wstring PromptLine() const;
  // What the command line offers the user while this prompt asks.
  CTarsaQuestion Question() const;
  Pick PickOption(const CTarsaToken& token);
  bool PickValue(Entry& entry, const std::wstring& word);

  std::wstring m_prompt;
  std::vector<Entry> m_options;
  CTarsaCommandOption m_picked;
};

class CTarsaGetOption : public CTarsaGet {
 public:
  result GetOption() { return Ask(); }
};

// Enter alone, when nothing is not accepted, answers with an empty string.
class CTarsaGetString : public CTarsaGet {
 public:
  result GetString() { return Ask(); }

 protected:
  bool TakeEnter() override;
  bool TakeText(const CTarsaToken& token) override;
};

// Objects are picked by name (every pickable object of that name) or by id; Enter ends the
// picking, and with none picked cancels the question. Pickable: normal objects of the active
// model, lights included.
class CTarsaGetObject : public CTarsaGet {
 public:
  // With pre-selection, objects selected before the prompt are the answer, without asking.
  void EnablePreSelect(bool enable = true, bool ignore_unacceptable = true);
  // Asks for at least `minimum` objects (at least one) and at most `maximum` (0: no limit).
  result GetObjects(int minimum, int maximum);
  int ObjectCount() const { return static_cast<int>(m_objects.size()); }
  CTarsaObjRef Object(int index) const;

 protected:
  bool TakeEnter() override;
  bool TakeText(const CTarsaToken& token) override;
  bool PicksObjects() const override { return true; }
  std::vector<ZK_UUID> PickedObjects() const override;

 private:
  void Pick(const CTarsaObject* object);

  // Empties the answer.
  void Clear();

  bool m_preselect = false;
  int m_minimum = 1;
  int m_maximum = 0;
  std::vector<const CTarsaObject*> m_objects;  // in the order picked
  // The objects picked by answers, to pick each once. A pre-selection that is taken whole goes
  // into m_objects alone: its walk meets each object once.
  std::unordered_set<const CTarsaObject*> m_picked_objects;
};
