#pragma once
// Qt slots and the errors of the code they call. An exception leaving a slot unwinds through
// Qt's event loop, which is undefined behaviour; every slot of the library's forms runs its
// body through guardSlot (or is connected with connectGuarded), so an error shows as an error
// message and the form stays usable.
#include <QObject>

#include <exception>
#include <utility>

namespace kivdb {

// Shows the error of a failed slot through the current message sink; null `what` is an
// error of unknown kind. Never throws: a sink that fails is ignored.
void showSlotError(const char* what) noexcept;

// Runs body; an exception shows as an error message instead of leaving the slot.
template <typename Body>
void guardSlot(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (const std::exception& e) {
        showSlotError(e.what());
    } catch (...) {
        showSlotError(nullptr);
    }
}

namespace detail {
// A slot's own parameter list, read off its call operator, so the guarded slot takes the same
// arguments and Qt passes it as many of the signal's as it asks for.
template <typename Member>
struct GuardedSlot;
template <typename Class, typename Result, typename... Args>
struct GuardedSlot<Result (Class::*)(Args...) const> {
    template <typename Slot>
    static auto wrap(Slot slot) {
        return [slot = std::move(slot)](Args... args) mutable { guardSlot([&] { slot(args...); }); };
    }
};
template <typename Class, typename Result, typename... Args>
struct GuardedSlot<Result (Class::*)(Args...)> : GuardedSlot<Result (Class::*)(Args...) const> {};
}  // namespace detail

// QObject::connect for a slot written as a function object (a lambda, not a generic one);
// the slot runs through guardSlot.
template <typename Sender, typename Signal, typename Slot>
QMetaObject::Connection connectGuarded(const Sender* sender, Signal signal, const QObject* context, Slot slot) {
    return QObject::connect(sender, signal, context,
                            detail::GuardedSlot<decltype(&Slot::operator())>::wrap(std::move(slot)));
}

}  // namespace kivdb
