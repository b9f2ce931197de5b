// The baseline of starting: a window with one tab widget and two text views, and nothing else.

#include <QApplication>
#include <QMainWindow>
#include <QTabWidget>
#include <QTextEdit>

#include "first_paint.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  auto* tabs = new QTabWidget;
  tabs->addTab(new QTextEdit, "Status");
  tabs->addTab(new QTextEdit, "Room");
  window.setCentralWidget(tabs);
  const brindle::EndAtFirstPaint end(window);
  window.resize(980, 640);
  window.show();
  return QApplication::exec();
}
