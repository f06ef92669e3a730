#ifndef VOREK_APPS_VOREK_DESK_START_PAGE_H_
#define VOREK_APPS_VOREK_DESK_START_PAGE_H_

#include <QList>
#include <QWidget>
#include <cstdint>
#include <functional>

class QVBoxLayout;

namespace vorek::desk {

// What stands where no report is open: the reports that were opened last, and the favourites.
class StartPage : public QWidget {
 public:
  explicit StartPage(QWidget* parent);

  struct Link {
    std::int32_t report = 0;
    QString title;
  };
  void Show(const QList<Link>& recent, const QList<Link>& favourites);
  std::function<void(std::int32_t report)> on_open;

 private:
  void AddLinks(const QString& head, const QList<Link>& links);

  QVBoxLayout* column_;
  QWidget* links_ = nullptr;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_START_PAGE_H_
