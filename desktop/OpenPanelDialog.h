// The dialogue for choosing existing files or folders: only what the panel allows can be chosen in it.
#pragma once

#include <QFileDialog>
#include <functional>

#include "platform/appkit/OpenPanel.h"

class QLabel;

namespace clipwave {

class OpenPanelDialog final : public QFileDialog {
  Q_OBJECT

 public:
  // Whether the panel allows the file at that path.
  using IsAllowed = std::function<bool(const QString& path)>;

  // Opens in the panel's directory, else in `lastFolder`, else in the home folder.
  OpenPanelDialog(const OpenPanel& panel, IsAllowed isAllowed, const QString& lastFolder, QWidget* parent);

  // The chosen paths as the file system bears them; empty unless the user has accepted.
  OpenPanelAnswer answer() const { return answer_; }

 protected:
  // Takes what was chosen, or stays and says in one line why it cannot be chosen.
  void accept() override;

 private:
  void setUpFilters();
  void setUpSizes();
  void setUpLines(const QString& message);
  QStringList candidates() const;
  QString objectionTo(const QString& path) const;
  void refuse(const QString& objection);

  const OpenPanel panel_;
  IsAllowed isAllowed_;
  QLabel* objection_ = nullptr;
  OpenPanelAnswer answer_;
};

// Whether the panel's allowed types hold a file: by its extension, letter for letter, or by `hfsType` of it,
// which is only asked where the extension does not decide.
bool isAllowedFile(const OpenPanel& panel, const std::string& path,
                   const std::function<std::string(const std::string&)>& hfsType);

}  // namespace clipwave
