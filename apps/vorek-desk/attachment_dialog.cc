#include "attachment_dialog.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "adapters/qt/qt_windows.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"

namespace vorek::desk {
namespace {

// A text between the quotes of a statement.
std::string Quoted(const QString& text) {
  return "N'" + text::Replace(text.toStdString(), "'", "''") + "'";
}

std::string CellOf(const ResultSet& rows, std::size_t column, std::size_t row) {
  return rows.columns[column].Display(row);
}

}  // namespace

AttachmentDialog::AttachmentDialog(DatabaseConnection& connection, std::int32_t form_type_id,
                                   std::int32_t form_id, QWidget* parent)
    : QDialog(parent),
      connection_(connection),
      form_type_id_(form_type_id),
      form_id_(form_id),
      list_(new QTableWidget(0, 4, this)) {
  setObjectName("attachments");
  setWindowTitle("پيوستهاي گزارش");
  setLayoutDirection(Qt::RightToLeft);
  resize(560, 320);
  list_->setHorizontalHeaderLabels({"رديف", "عنوان", "نام فايل", "نوع"});
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->verticalHeader()->hide();
  list_->setAccessibleName("پيوستها");
  // Rows are chosen: Tab goes on to the buttons.
  list_->setTabKeyNavigation(false);
  list_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  MakeButtons();
  Reload();
}

void AttachmentDialog::MakeButtons() {
  auto* const row = new QHBoxLayout;
  const auto add = [&](const char* caption, auto&& work) {
    auto* const button = new QPushButton(caption, this);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, work);
    row->addWidget(button);
    return button;
  };
  add("...افزودن", [this] {
    const QString path = QFileDialog::getOpenFileName(this, "فايل پيوست");
    if (!path.isEmpty()) Add(path);
  });
  save_ = add("...ذخيره در", [this] {
    const QString path = QFileDialog::getSaveFileName(this, "ذخيره پيوست");
    if (!path.isEmpty()) SaveAs(path);
  });
  delete_ = add("حذف", [this] {
    QMessageBox ask(QMessageBox::Question, "پرسش", "پيوست حذف شود؟", QMessageBox::NoButton, this);
    ask.setLayoutDirection(Qt::RightToLeft);
    const QPushButton* const yes = ask.addButton("بلي", QMessageBox::YesRole);
    ask.addButton("خير", QMessageBox::NoRole);
    ask.exec();
    if (ask.clickedButton() == yes) DeleteChosen();
  });
  row->addStretch(1);
  add("بستن", [this] { accept(); });
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
  connect(list_, &QTableWidget::itemSelectionChanged, this, [this] {
    save_->setEnabled(ChosenNumber() >= 0);
    delete_->setEnabled(ChosenNumber() >= 0);
  });
}

std::string AttachmentDialog::Where() const {
  return " where FormTypeID = " + std::to_string(form_type_id_) +
         " and FormID = " + std::to_string(form_id_);
}

ResultSetPtr AttachmentDialog::Run(const std::string& text) const {
  return connection_.Execute(text, {});
}

template <typename Work>
bool AttachmentDialog::Try(const Work& work) {
  try {
    work();
  } catch (const Error& error) {
    qt::ShowFailure(this, QString::fromStdString(error.Description()));
    return false;
  }
  return true;
}

void AttachmentDialog::Reload() {
  Try([this] {
    const ResultSetPtr rows =
        Run("select RowNumber, Title, FileName, FileExtension from tblVorekFormAttachment" +
            Where() + " order by RowNumber");
    list_->setRowCount(static_cast<int>(rows->rows));
    for (std::size_t row = 0; row < rows->rows; ++row) {
      for (std::size_t column = 0; column < rows->columns.size(); ++column) {
        list_->setItem(static_cast<int>(row), static_cast<int>(column),
                       new QTableWidgetItem(QString::fromStdString(CellOf(*rows, column, row))));
      }
    }
  });
  list_->clearSelection();
  list_->setCurrentItem(nullptr);
  save_->setEnabled(false);
  delete_->setEnabled(false);
}

int AttachmentDialog::ChosenNumber() const {
  const QModelIndexList rows = list_->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.front().data().toInt();
}

bool AttachmentDialog::Add(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    qt::ShowFailure(this, "فايل خوانده نمي شود: " + file.errorString());
    return false;
  }
  const std::string bytes = file.readAll().toHex().toStdString();
  const QFileInfo info(path);
  // The list of templates goes by the old extensions; what a file is, its content tells.
  QString extension = info.suffix().toLower().left(10);
  if (extension == "xlsx" || extension == "xltx") extension = "xls";
  const bool added = Try([&] {
    Run("insert into tblVorekFormAttachment (FormTypeID, FormID, RowNumber, Title, FileName, "
        "FileExtension, IsExternal, FileData) select " +
        std::to_string(form_type_id_) + ", " + std::to_string(form_id_) +
        ", isnull(max(RowNumber), 0) + 1, " + Quoted(info.completeBaseName().left(200)) + ", " +
        Quoted(info.fileName().left(260)) + ", " + Quoted(extension) + ", 0, 0x" + bytes +
        " from tblVorekFormAttachment" + Where());
  });
  Reload();
  return added;
}

bool AttachmentDialog::SaveAs(const QString& path) {
  return Try([&] {
    const ResultSetPtr row = Run("select FileData from tblVorekFormAttachment" + Where() +
                                 " and RowNumber = " + std::to_string(ChosenNumber()));
    const std::string text = row->rows == 0 ? "" : CellOf(*row, 0, 0);
    QFile file(path);
    const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(text).mid(2));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
      throw Error(ErrorNumber::kPathAccess, file.errorString().toStdString());
    }
  });
}

void AttachmentDialog::DeleteChosen() {
  if (ChosenNumber() < 0) return;
  Try([this] {
    Run("delete from tblVorekFormAttachment" + Where() +
        " and RowNumber = " + std::to_string(ChosenNumber()));
  });
  Reload();
}

void DeskAttachments::Show() {
  const std::string provider = ConnectionValue(ParseConnectionString(connection_), {"Provider"});
  for (const std::shared_ptr<DatabaseProvider>& known : providers_) {
    if (!known->Answers(provider)) continue;
    const std::unique_ptr<DatabaseConnection> connection = known->Connect(connection_);
    AttachmentDialog(*connection, form_type_id_, form_id_, QApplication::activeWindow()).exec();
    return;
  }
}

}  // namespace vorek::desk
