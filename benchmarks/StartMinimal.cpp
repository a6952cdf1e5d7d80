// The yardstick for the start: the least that has a window with a line of text.

#include <QLabel>
#include <QMainWindow>

#include "FirstPaint.hpp"

int main(int count, char** values) {
    Tamber::Bench::FirstPaintApplication application(count, values);
    QMainWindow window;
    window.setCentralWidget(new QLabel("Programmer"));
    window.resize(740, 640);
    window.show();
    return QApplication::exec();
}
