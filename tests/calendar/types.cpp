// What must not compile: a local moment where Coordinated Universal Time is meant, a day where a
// moment is meant, a plain number where one of them is meant, and the other way round.
#include <type_traits>

#include "calendar/calendar_date.h"

namespace orvello {
namespace {

template <typename A, typename B>
concept Add = requires(A a, B b) {
  a + b;
};
template <typename A, typename B>
concept Subtract = requires(A a, B b) {
  a - b;
};
template <typename A, typename B>
concept Compare = requires(A a, B b) {
  a < b;
};
template <typename A, typename B>
concept Equal = requires(A a, B b) {
  a == b;
};
template <typename A, typename B>
constexpr bool kApart =
    !std::is_convertible_v<A, B> && !std::is_constructible_v<A, B> &&
    !std::is_assignable_v<A&, B> && !Subtract<A, B> && !Compare<A, B> && !Equal<A, B> && !Add<A, B>;

static_assert(kApart<UtcSeconds, LocalSeconds> && kApart<LocalSeconds, UtcSeconds>);
static_assert(!Add<LocalSeconds, LocalSeconds> && !Add<UtcSeconds, UtcSeconds>);
static_assert(!std::is_convertible_v<std::int64_t, LocalSeconds>);
static_assert(!std::is_convertible_v<LocalSeconds, std::int64_t>);
static_assert(!std::is_constructible_v<LocalSeconds, double>);  // a calendar date
static_assert(!Equal<LocalSeconds, int> && !Compare<UtcSeconds, std::int64_t>);
static_assert(!Subtract<std::int64_t, LocalSeconds>);

static_assert(kApart<Day, LocalSeconds> && kApart<LocalSeconds, Day> && !Add<Day, Day>);
static_assert(!std::is_convertible_v<int, Day> && !std::is_convertible_v<Day, int>);
static_assert(!std::is_convertible_v<Day, CalendarDate>);
static_assert(!std::is_constructible_v<Day, CalendarDate> && !Equal<Day, CalendarDate>);
static_assert(!Equal<Day, int> && !Subtract<int, Day>);

// They cost what a number costs.
static_assert(std::is_trivially_copyable_v<UtcSeconds> && sizeof(UtcSeconds) == 8);
static_assert(std::is_trivially_copyable_v<Day> && sizeof(Day) == 4);
static_assert(LocalSeconds(90) - LocalSeconds(30) == 60 &&
              LocalSeconds(30) + 60 < LocalSeconds(91));

}  // namespace
}  // namespace orvello
