// TsTopViewWidget: the window's view of the model, looking down the z axis, drawn from the same
// points as the SVG top view: every object that is not hidden, with its name; selected objects
// highlighted, locked ones grey, lights as a sun with a ray toward where they shine. The view
// fits the visible objects. It reads the active document each time it paints, so an update()
// after a command shows the model as the command left it. Owned by the main window.
#pragma once

#include <QWidget>

class TsTopViewWidget : public QWidget {
 public:
  explicit TsTopViewWidget(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};
