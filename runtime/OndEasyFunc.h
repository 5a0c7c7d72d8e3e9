#pragma once

#include "config/Export.h"

#include <tuple>
#include <type_traits>
#include <utility>

/// Calls that are made later, on another thread: a member function, its target and copies of its arguments.
namespace ondeasy {

/// A call. Owned by whoever holds it.
class ONDPDFTOOLUTILS_EXPORT IFunc
{
public:
    virtual ~IFunc();
    /// Makes the call, on the calling thread.
    virtual void run() = 0;
};

/// A member call of any arity. The target is not owned and must outlive the call. The member may be virtual. Each run
/// passes fresh copies of the stored arguments and drops the result; a null target or member is not called.
template <typename Target, typename Result, typename... Arguments> class ClassFunc : public IFunc
{
public:
    /// The member function.
    using Member = Result (Target::*)(Arguments...);

    /// Copies the arguments.
    ClassFunc(Target *target, Member member, std::decay_t<Arguments>... arguments)
        : m_target(target), m_member(member), m_arguments(std::move(arguments)...)
    {
    }

    /// Makes the call.
    void run() override
    {
        if (!m_target || !m_member)
            return;
        auto copies = m_arguments;
        std::apply(
            [this](auto &...argument) {
                static_cast<void>((m_target->*m_member)(std::forward<Arguments>(argument)...));
            },
            copies);
    }

private:
    Target *m_target;
    Member m_member;
    std::tuple<std::decay_t<Arguments>...> m_arguments;
};

///@{

/// A member call by the number of its arguments.
template <typename Target, typename Result> using ClassFunc_0 = ClassFunc<Target, Result>;

template <typename Target, typename Result, typename Argument> using ClassFunc_1 = ClassFunc<Target, Result, Argument>;

template <typename Target, typename Result, typename First, typename Second>
using ClassFunc_2 = ClassFunc<Target, Result, First, Second>;
///@}

/// Makes calls on the heap; the caller owns them.
class FuncFactory
{
public:
    /// A call of `member` on `target` with copies of `arguments`.
    template <typename Target, typename Result, typename... Parameters, typename... Arguments>
    static IFunc *create_class_func(Target *target, Result (Target::*member)(Parameters...), Arguments &&...arguments)
    {
        return new ClassFunc<Target, Result, Parameters...>(target, member, std::forward<Arguments>(arguments)...);
    }
};

} // namespace ondeasy
