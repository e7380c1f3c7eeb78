#pragma once
// The host's screen object: the data modules a host program has created, each holding
// components such as its database connection. GetDataConnection searches it afresh on
// every call. Hosts that reach the library through the C ABI register theirs with
// kivdb_host_add_data_module / kivdb_host_add_component.
//
// Hosts register and search from any thread: the screen's lock covers every change to it
// and every search. Data modules and connections are shared-owned, so a handle the C
// interface gave out can tell that what it stood for was removed.
#include "platform/connection.h"

#include <memory>
#include <mutex>
#include <vector>

namespace kivdb {

// A component owned by a data module. A component with a connection URL is a database
// connection component; it connects the first time it is opened.
class HostComponent {
public:
    HostComponent(QString className, QString connectionUrl)
        : className_(std::move(className)), url_(std::move(connectionUrl)) {}
    const QString& className() const { return className_; }
    bool isConnected() const { return connection_ != nullptr; }
    // Connects if not yet connected; does nothing when connected. Throws DatabaseError.
    Connection& open();
    Connection* connection() const { return connection_.get(); }

private:
    QString className_;
    QString url_;
    std::shared_ptr<Connection> connection_;
};

class HostDataModule : public std::enable_shared_from_this<HostDataModule> {
public:
    explicit HostDataModule(QString className) : className_(std::move(className)) {}
    const QString& className() const { return className_; }
    int componentCount() const { return int(components_.size()); }
    HostComponent& component(int index) const { return *components_.at(size_t(index)); }
    HostComponent& addComponent(const QString& className, const QString& connectionUrl = {});

private:
    QString className_;
    std::vector<std::unique_ptr<HostComponent>> components_;
};

// The process's registered data modules, in creation order.
class HostScreen {
public:
    static HostScreen& instance();
    int dataModuleCount() const { return int(modules_.size()); }
    HostDataModule& dataModule(int index) const { return *modules_.at(size_t(index)); }
    HostDataModule& addDataModule(const QString& className);
    void removeDataModule(HostDataModule& module);
    // Held while reading the screen, or while a pointer found in it is being turned into
    // something that outlives the search.
    std::unique_lock<std::recursive_mutex> lock() const { return std::unique_lock(mutex_); }

private:
    mutable std::recursive_mutex mutex_;
    std::vector<std::shared_ptr<HostDataModule>> modules_;
};

}  // namespace kivdb
