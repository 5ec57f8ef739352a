#include "host/platform/standin/scripted_answers.h"

void CTsScriptedAnswers::Choose(UINT id) {
  ScriptedAnswer answer;
  answer.cancel = false;
  answer.id = id;
  m_answers.push_back(answer);
}

void CTsScriptedAnswers::Enter(const std::wstring& text) {
  ScriptedAnswer answer;
  answer.cancel = false;
  answer.text = text;
  m_answers.push_back(answer);
}

void CTsScriptedAnswers::Answer(bool yes) {
  ScriptedAnswer answer;
  answer.cancel = false;
  answer.yes = yes;
  m_answers.push_back(answer);
}

void CTsScriptedAnswers::Cancel() { m_answers.push_back(ScriptedAnswer()); }

std::vector<CTsScriptedAnswers::Question> CTsScriptedAnswers::TakeQuestions() {
  std::vector<Question> questions;
  questions.swap(m_questions);
  return questions;
}

void CTsScriptedAnswers::Reset() {
  m_answers.clear();
  m_questions.clear();
}

CTsScriptedAnswers::ScriptedAnswer CTsScriptedAnswers::Next() {
  if (m_answers.empty()) return ScriptedAnswer();
  const ScriptedAnswer answer = m_answers.front();
  m_answers.pop_front();
  return answer;
}

UINT CTsScriptedAnswers::ChooseMenuItem(HMENU menu, POINT point, HWND) {
  Question question;
  question.kind = Question::menu;
  question.menu_items = TsMenuItems(menu);
  question.default_item = GetMenuDefaultItem(menu);
  question.point = point;
  m_questions.push_back(question);
  const ScriptedAnswer answer = Next();
  return answer.cancel ? 0 : answer.id;
}

bool CTsScriptedAnswers::AskText(const std::wstring& title, const std::wstring& prompt,
                                 const std::wstring& proposed, std::wstring& text) {
  Question question;
  question.kind = Question::text;
  question.title = title;
  question.prompt = prompt;
  question.proposed = proposed;
  m_questions.push_back(question);
  const ScriptedAnswer answer = Next();
  if (answer.cancel) return false;
  text = answer.text;
  return true;
}

bool CTsScriptedAnswers::AskYesNo(const std::wstring& question_text, const std::wstring& caption) {
  Question question;
  question.kind = Question::yes_no;
  question.title = caption;
  question.prompt = question_text;
  m_questions.push_back(question);
  const ScriptedAnswer answer = Next();
  return !answer.cancel && answer.yes;
}

bool CTsScriptedAnswers::EditLabel(HWND, int item, const std::wstring& current,
                                   std::wstring& text) {
  Question question;
  question.kind = Question::label;
  question.prompt = current;
  question.item = item;
  m_questions.push_back(question);
  const ScriptedAnswer answer = Next();
  if (answer.cancel) return false;
  text = answer.text;
  return true;
}

CTsScriptedAnswers& TsScriptedAnswers() {
  static CTsScriptedAnswers answers;
  return answers;
}
