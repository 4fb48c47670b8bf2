#include "app/gui/single_instance.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace ostrane::gui {

SingleInstance::SingleInstance(QString key) : key_(std::move(key)) {}

SingleInstance::~SingleInstance() {
  if (server_) server_->close();
  if (lock_) lock_->unlock();
}

QString SingleInstance::DefaultKey() {
  QString user = qEnvironmentVariable("USER");
  if (user.isEmpty()) user = QStringLiteral("joueur");
  return QStringLiteral("ostrane-") + user;
}

QString SingleInstance::LockPath() const {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation)).filePath(key_ + QStringLiteral(".lock"));
}

bool SingleInstance::Acquire() {
  lock_ = std::make_unique<QLockFile>(LockPath());
  lock_->setStaleLockTime(0);  // held for the whole run: only a dead owner makes it stale
  bool held = lock_->tryLock(0);
  if (!held && lock_->error() == QLockFile::LockFailedError && lock_->removeStaleLockFile()) held = lock_->tryLock(0);
  if (!held) {
    AskOtherToShow();
    lock_.reset();
    return false;
  }
  server_ = new QLocalServer(this);
  QLocalServer::removeServer(key_);  // a socket left by a copy that crashed
  if (server_->listen(key_)) {
    connect(server_, &QLocalServer::newConnection, this, [this] {
      while (QLocalSocket* socket = server_->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
          if (socket->readAll().contains("show")) emit showRequested();
        });
      }
    });
  }
  return true;
}

void SingleInstance::AskOtherToShow() {
  QLocalSocket socket;
  socket.connectToServer(key_);
  if (!socket.waitForConnected(500)) return;
  socket.write("show\n");
  socket.waitForBytesWritten(500);
  socket.disconnectFromServer();
}

}  // namespace ostrane::gui
