// The yardstick for the start: the least that has a window with a document area; asked for "text",
// one that shows a line of it.

#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <string_view>

#include "FirstPaint.hpp"

int main(int count, char** values) {
    Tamber::Bench::FirstPaintApplication application(count, values);
    QMainWindow window;
    auto* documents = new QMdiArea;
    window.setCentralWidget(documents);
    if (std::string_view(values[count - 1]) == "text")
        new QLabel("A line of text", documents);
    window.resize(740, 640);
    window.show();
    return QApplication::exec();
}
