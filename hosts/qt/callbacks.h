// Every way in which the toolkit calls this program. It is built without exceptions: one that came
// out of a callback would leave it in pieces. So events, signals, timers and calls for later pass
// through here, and what is thrown in them is caught right where it would enter the toolkit, told
// and logged (guarded_application.h); the calendar goes on. tools/check_layout.sh refuses others.
#pragma once

#include <QAbstractListModel>
#include <QMetaObject>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QWidget>
#include <type_traits>
#include <utility>

namespace orvello {

// In a catch block: tells what was caught.
void tell_caught() noexcept;

template <typename Action>
void guarded(Action&& action) noexcept {
  try {
    std::forward<Action>(action)();
  } catch (...) {
    tell_caught();
  }
}

// The action takes all that the signal says or nothing of it.
template <typename Sender, typename Signal, typename Action>
void on_signal(const Sender* sender, Signal signal, const QObject* context, Action action) {
  QObject::connect(sender, signal, context, [action](auto... said) mutable {
    guarded([&] {
      if constexpr (std::is_invocable_v<Action&, decltype(said)...>)
        action(said...);
      else
        action();
    });
  });
}

// Once, from the message loop, unless `context` is gone by then.
template <typename Action>
void after(int milliseconds, QObject* context, Action action) {
  QTimer::singleShot(milliseconds, context, [action]() mutable { guarded(action); });
}

// The same as soon as the events that are under way have returned.
template <typename Action>
void later(QObject* context, Action action) {
  QMetaObject::invokeMethod(
      context, [action]() mutable { guarded(action); }, Qt::QueuedConnection);
}

// A widget or object of ours: all of its event handlers are called from here.
template <typename Base>
class Guarded : public Base {
 public:
  using Base::Base;
  bool event(QEvent* event) final {
    bool taken = true;
    guarded([&] { taken = take_event(event); });
    return taken;
  }
  bool eventFilter(QObject* object, QEvent* event) final {
    bool taken = false;
    guarded([&] { taken = filter_event(object, event); });
    return taken;
  }

 protected:
  virtual bool take_event(QEvent* event) { return Base::event(event); }
  virtual bool filter_event(QObject* object, QEvent* event) {
    return Base::eventFilter(object, event);
  }
};

// One that scrolls gets what happens inside of it by another way.
template <typename Base>
class GuardedView : public Guarded<Base> {
 public:
  using Guarded<Base>::Guarded;

 protected:
  bool viewportEvent(QEvent* event) final {
    bool taken = true;
    guarded([&] { taken = take_viewport_event(event); });
    return taken;
  }
  virtual bool take_viewport_event(QEvent* event) { return Base::viewportEvent(event); }
};

// Rows of a list, and how they are drawn.
class GuardedRows : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;
  QVariant data(const QModelIndex& index, int role) const final {
    QVariant value;
    guarded([&] { value = row_data(index, role); });
    return value;
  }

 protected:
  virtual QVariant row_data(const QModelIndex& index, int role) const = 0;
};

class GuardedDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const final {
    QSize size(0, 0);
    guarded([&] { size = row_size(option, index); });
    return size;
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const final {
    guarded([&] { paint_row(painter, option, index); });
  }

 protected:
  virtual QSize row_size(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return QStyledItemDelegate::sizeHint(option, index);
  }
  virtual void paint_row(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
  }
};

}  // namespace orvello
