#include "platform/qt/Application.h"

#include <QtCore/QCoreApplication>
#include <QtNetwork/QNetworkProxyFactory>

#include <clocale>

namespace nordkeep {

std::unique_ptr<QCoreApplication> MakeCoreApplication(int& argc, char** argv) {
    // The toolkit's own dispatcher: the order of events within a turn of the loop is then known.
    qputenv("QT_NO_GLIB", "1");
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    SettleApplication();
    return application;
}

bool IsScreenThere() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

void SettleApplication() {
    std::setlocale(LC_NUMERIC, "C");
    QNetworkProxyFactory::setUseSystemConfiguration(false);
}

}  // namespace nordkeep
