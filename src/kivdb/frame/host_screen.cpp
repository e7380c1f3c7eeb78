#include "frame/host_screen.h"

#include "kivdb/exports.h"

namespace kivdb {

Connection& HostComponent::open() {
    const auto screen = HostScreen::instance().lock();
    if (!connection_) connection_ = Connection::open(url_);
    return *connection_;
}

HostComponent& HostDataModule::addComponent(const QString& className, const QString& connectionUrl) {
    const auto screen = HostScreen::instance().lock();
    components_.push_back(std::make_unique<HostComponent>(className, connectionUrl));
    return *components_.back();
}

HostScreen& HostScreen::instance() {
    static HostScreen screen;
    return screen;
}

HostDataModule& HostScreen::addDataModule(const QString& className) {
    const auto screen = lock();
    modules_.push_back(std::make_shared<HostDataModule>(className));
    return *modules_.back();
}

void HostScreen::removeDataModule(HostDataModule& module) {
    const auto screen = lock();
    std::erase_if(modules_, [&](const auto& m) { return m.get() == &module; });
}

// Class names are compared upper-cased and exactly: a class derived from the connection
// class has another name and does not match. When several data modules match, the last
// one registered wins; within it, the first connection component is used.
Connection* GetDataConnection() {
    const HostScreen& screen = HostScreen::instance();
    const auto searching = screen.lock();
    HostDataModule* found = nullptr;
    for (int i = 0; i < screen.dataModuleCount(); ++i)
        if (screen.dataModule(i).className().toUpper() == QLatin1String("TKIVDMDATAMODULE"))
            found = &screen.dataModule(i);
    if (!found) return nullptr;
    for (int i = 0; i < found->componentCount(); ++i) {
        HostComponent& component = found->component(i);
        if (component.className().toUpper() == QLatin1String("TADOCONNECTION")) return &component.open();
    }
    return nullptr;
}

}  // namespace kivdb
