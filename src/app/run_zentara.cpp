#include "app/run_zentara.h"

#include "app/app_data.h"
#include "app/app_globals.h"
#include "app/app_ui_context.h"
#include "app/auto_save.h"
#include "app/catalogue_scan.h"
#include "app/command_line.h"
#include "app/qml_register_types.h"
#include "app/quit_on_signals.h"
#include "app/single_application.h"
#include "app/zentara_app_model.h"
#include "chartview/rastelle_view.h"
#include "core/display_metrics.h"
#include "core/heartbeat_timer.h"
#include "core/listener.h"
#include "core/persistant_data.h"
#include "nmea/data_connection.h"

#include <clocale>
#include <sys/stat.h>

#include <QDir>
#include <QFontDatabase>
#include <QIcon>
#include <QLoggingCategory>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>

QQmlApplicationEngine* theAppEngine = nullptr;

namespace {

constexpr const char* kMakersDomain = "zentara.example";
Q_LOGGING_CATEGORY(StartLog, "zentara.start", QtWarningMsg)

/// The hook for platforms that need something before anything else; this one needs that maps are painted on the main
/// thread, where their views live.
void platformInitialization()
{
    if (qEnvironmentVariableIsEmpty("QSG_RENDER_LOOP")) qputenv("QSG_RENDER_LOOP", "basic");
}

void HandOver(SingleApplication& application, int argc, char** argv)
{
    const std::vector<std::string> arguments(argv, argv + argc);
    const std::string message = JoinForOtherInstance(arguments, QDir::currentPath().toStdString());
    application.sendMessage(QByteArray::fromStdString(message), 100);
    qInfo("App already running.");
}

void AddFonts()
{
    for (const char* font : {":/Roboto-Regular.ttf", ":/Roboto-Bold.ttf", ":/Roboto-Italic.ttf"}) {
        QFontDatabase::addApplicationFont(QString::fromLatin1(font));
    }
}

void TakeScreen(const QQuickWindow& window)
{
    const QScreen* screen = window.screen();
    if (screen == nullptr) return;
    qDebug() << "devicePixelRatio: " << screen->devicePixelRatio() << ", ldpi: " << screen->logicalDotsPerInch()
             << " and "
             << ", pdpi: " << screen->physicalDotsPerInch();
    SetGraphicsResolution(screen->devicePixelRatio());
}

/// Says once when the map has been painted: what bench/startup waits for.
void LogFirstFrame(QQuickWindow& window)
{
    if (!StartLog().isInfoEnabled()) return;
    QObject::connect(&window, &QQuickWindow::frameSwapped, theApp, [&window] {
        const CRastelleView* view = theApp->LargestMap();
        if (view == nullptr || !view->IsOpen()) return;
        QObject::disconnect(&window, &QQuickWindow::frameSwapped, theApp, nullptr);
        qCInfo(StartLog, "first frame of the map");
    });
}

/// The window stands: what needs one begins.
void OnWindowCreated(QQuickWindow& window, const std::vector<std::string>& args)
{
    window.setIcon(QIcon(QStringLiteral(":/appicon.png")));
    CDataConnection::AppWasResumed();
    CDataConnection::UpdatedBackgroundSettings();
    TakeScreen(window);
    if (theApp == nullptr) return;
    QObject::connect(&window, &QQuickWindow::activeChanged, theApp, [&window] {
        if (window.isActive()) {
            emit theApp->applicationDidBecomeActive();
        } else {
            emit theApp->applicationWillResignActive();
        }
    });
    LogFirstFrame(window);
    theApp->processCommandLine(args);
}

void OnObjectCreated(QObject* object, const QUrl& created, const QUrl& url, const std::vector<std::string>& args)
{
    if (created != url) return;
    if (object == nullptr) {
        QCoreApplication::exit(-1);
    } else if (auto* window = qobject_cast<QQuickWindow*>(object)) {
        OnWindowCreated(*window, args);
    }
}

void OnLoopEnded()
{
    CDataConnection::AppWasDestroyed();
    ShutDown shut_down;
    DispatchToListeners(shut_down);
    save_all_app_data();
}

int RunPrimary(const std::vector<std::string>& args)
{
    CQuitOnSignals quit_on_signals;
    CAppUiContext ui_context;
    QQmlApplicationEngine engine;
    theAppEngine = &engine;
    AddFonts();
    PersistantData::LoadAll("zentara");
    load_app_data();
    const QUrl url(QStringLiteral("qrc:/main.qml"));
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, qGuiApp,
        [url, args](QObject* object, const QUrl& created) { OnObjectCreated(object, created, url, args); },
        Qt::QueuedConnection);
    engine.load(url);
    RunHeartbeatUntilShutdown heartbeat;
    CCatalogueScan catalogue_scan;
    CAutoSave auto_save;
    const int code = QGuiApplication::exec();
    OnLoopEnded();
    theAppEngine = nullptr;
    return code;
}

} // namespace

int RunZentara(int argc, char** argv)
{
    umask(0);
    platformInitialization();
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    SingleApplication application(argc, argv, 1000);
    std::setlocale(LC_NUMERIC, "C"); // the application object has taken the environment's locale
    if (application.isSecondary()) {
        HandOver(application, argc, argv);
        return 0;
    }
    const CCommandLine line = CCommandLine::Parse(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Zentara"));
    QCoreApplication::setOrganizationDomain(QString::fromLatin1(kMakersDomain));
    QCoreApplication::setApplicationName(QString::fromStdString(line.profile));
    QQuickStyle::setStyle(QStringLiteral("Material"));
    qml_register_types();
    return RunPrimary(line.arguments);
}
