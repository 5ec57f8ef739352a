#include "shell/window/window_answers.h"

#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>

#include "shell/window/panel_dock.h"

UINT TsWindowAnswers::ChooseMenuItem(HMENU menu, POINT point, HWND) {
  QMenu shown(m_parent);
  shown.setObjectName("panel_menu");
  const int default_id = GetMenuDefaultItem(menu);
  for (const TsMenuItem& item : TsMenuItems(menu)) {
    if (item.separator) {
      shown.addSeparator();
      continue;
    }
    QAction* action = shown.addAction(QString::fromStdWString(item.text));
    action->setData(item.id);
    if (static_cast<int>(item.id) == default_id) {
      QFont bold = action->font();
      bold.setBold(true);
      action->setFont(bold);
    }
  }
  const QAction* chosen = shown.exec(QPoint(point.x, point.y));
  return chosen == nullptr ? 0 : chosen->data().toUInt();
}

bool TsWindowAnswers::AskText(const std::wstring& title, const std::wstring& prompt,
                              const std::wstring& proposed, std::wstring& text) {
  QInputDialog dialog(m_parent);
  dialog.setWindowTitle(QString::fromStdWString(title));
  dialog.setLabelText(QString::fromStdWString(prompt));
  dialog.setTextValue(QString::fromStdWString(proposed));
  if (dialog.exec() != QDialog::Accepted) return false;
  text = dialog.textValue().toStdWString();
  return true;
}

bool TsWindowAnswers::AskYesNo(const std::wstring& question, const std::wstring& caption) {
  QMessageBox box(QMessageBox::Question, QString::fromStdWString(caption),
                  QString::fromStdWString(question), QMessageBox::Yes | QMessageBox::No, m_parent);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

bool TsWindowAnswers::EditLabel(HWND, int item, const std::wstring& current, std::wstring& text) {
  return m_dock.EditLabel(item, current, text);
}
