// kivdb: command line tool over the library.
#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::fprintf(stderr, "usage: kivdb init|sql ...\n");
    return 2;
}
