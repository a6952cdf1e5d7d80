// The yardstick for the start: the least that has a window with a document area.

#include <QMainWindow>
#include <QMdiArea>

#include "FirstPaint.hpp"

int main(int count, char** values) {
    Tamber::Bench::FirstPaintApplication application(count, values);
    QMainWindow window;
    window.setCentralWidget(new QMdiArea);
    window.resize(740, 640);
    window.show();
    return QApplication::exec();
}
