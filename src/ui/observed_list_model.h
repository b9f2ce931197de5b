#pragma once
// Shows an observed list in a list view or a combo box. Rows are read from the list as they are
// drawn; nothing is copied.

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "base/observed_list.h"

namespace brindle {

class ObservedListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  // Observes `list` for as long as this lives; `list` must live longer.
  template <typename List>
  explicit ObservedListModel(const List& list, QObject* parent = nullptr)
      : ObservedListModel(
            list, [&list](size_t row) -> std::string_view { return RowText(list[row]); },
            list.Size(), parent) {}
  ~ObservedListModel() override;

  // How a row looks beside its text: what `look` has for the toolkit's roles.
  using Look = std::function<QVariant(std::string_view text, int role)>;
  void SetLook(Look look) { look_ = std::move(look); }
  // Rows look different now.
  void Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  using TextOfRow = std::function<std::string_view(size_t)>;

  ObservedListModel(const Observed& list, TextOfRow textOfRow, size_t rows, QObject* parent);
  void Before(const ListChange& change);
  void After(const ListChange& change);

  const Observed& list_;
  const TextOfRow textOfRow_;
  Look look_;
  int rows_;  // as told to the views
};

// Lets a list view show the model. When the selected row is removed, nothing is selected.
void ShowIn(QAbstractItemView& view, ObservedListModel& model);

// A row as the toolkit counts it, -1 for none.
inline std::optional<size_t> RowFrom(int row) {
  return row < 0 ? std::nullopt : std::optional(static_cast<size_t>(row));
}
inline int ToInt(std::optional<size_t> row) { return row ? static_cast<int>(*row) : -1; }

}  // namespace brindle
