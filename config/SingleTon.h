#pragma once

/// The one instance of a class for the whole process, made by the first call of GetInstance() and never destroyed.
///
/// GetInstance() may be called from any thread. A class that is shared by several libraries declares its instantiation
/// `extern template` in its header, and defines it in its source, so that all of them reach the same instance.
template <typename T> class SingleTon
{
public:
    /// The instance. Not owned by the caller.
    static T *GetInstance();
};

template <typename T> T *SingleTon<T>::GetInstance()
{
    static T &obj = *new T;
    return &obj;
}
