// An empty window of the toolkit, for as long as it is left alone.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    window.resize(640, 480);
    window.show();
    return QApplication::exec();
}
