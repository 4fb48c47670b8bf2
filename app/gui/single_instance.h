#pragma once
// Only one copy of the program runs at a time. The first copy holds a lock
// file in the temporary folder (a copy that crashed leaves a lock that the
// next start takes over, by the owner's process id) and listens on a local
// socket beside it; a second copy asks the first to show itself and ends.

#include <QObject>
#include <QString>

#include <memory>

class QLockFile;
class QLocalServer;

namespace ostrane::gui {

class SingleInstance : public QObject {
  Q_OBJECT
 public:
  // `key` names the lock and the socket; tests give their own.
  explicit SingleInstance(QString key = DefaultKey());
  ~SingleInstance() override;

  // True when this is the only copy: the lock is held and the socket listens.
  // False when another copy holds the lock; that copy has been asked to show
  // itself.
  bool Acquire();

  QString LockPath() const;
  QString ServerName() const { return key_; }
  static QString DefaultKey();

 signals:
  // Another copy asked this one to come to the front.
  void showRequested();

 private:
  void AskOtherToShow();
  QString key_;
  std::unique_ptr<QLockFile> lock_;
  QLocalServer* server_ = nullptr;
};

}  // namespace ostrane::gui
