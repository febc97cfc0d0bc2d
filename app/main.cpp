#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Ostrovalden Skole");
    QMainWindow window;
    window.setWindowTitle("Ostrovalden Skole");
    window.resize(1280, 800);
    window.show();
    return app.exec();
}
