// The yardstick of the command line: a program that loads QtCore and nothing
// else, makes its application object and prints one line. What
// tallyvane-cli takes beyond this is the command line's own cost.
#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream(stdout) << "Return on Investment: 25" << Qt::endl;
    return 0;
}
