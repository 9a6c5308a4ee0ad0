// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/config/icfg.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <QtCore/QLatin1String>
#include <QtCore/QString>

#include <cstddef>
#include <limits>
#include <type_traits>

/// How settings stand in the configuration store, which knows texts, flags and integers.
namespace storedsetting {

inline QString Read(ICfg& cfg, const QString& key, const QString& fallback) {
    return cfg.ReadString(key, fallback);
}
inline bool Read(ICfg& cfg, const QString& key, bool fallback) {
    return cfg.ReadBool(key, fallback);
}
inline int Read(ICfg& cfg, const QString& key, int fallback) {
    return cfg.ReadInt(key, fallback);
}

inline void Commit(ICfg& cfg, const QString& key, const QString& text) {
    cfg.WriteString(key, text);
    cfg.CommitKey(key);
}
inline void Commit(ICfg& cfg, const QString& key, int number) {
    cfg.WriteInt(key, number);
    cfg.CommitKey(key);
}
inline void Commit(ICfg& cfg, const QString& key, bool flag) {
    cfg.WriteBool(key, flag);
    cfg.CommitKey(key);
}

/// Truncates toward zero; what does not fit is the lowest number. (fixed: frequency-of-32-bits)
inline int ToInt32(double number) {
    constexpr double Beyond = 2147483648.0;
    const bool fits = number > -Beyond - 1.0 && number < Beyond;
    return fits ? static_cast<int>(number) : std::numeric_limits<int>::min();
}

// The content of a value as the store holds it: whole hertz, and the index of a selection.

template <class T>
T ContentOf(const values::Value<T>& value) {
    return value.GetValue();
}
inline int ContentOf(const values::ValueNumeric<int>& number) {
    return number.GetValue();
}
inline int ContentOf(const values::ValueNumeric<double>& hz) {
    return ToInt32(hz.GetValue());
}
inline int ContentOf(const values::ValueSelection& selection) {
    return selection.GetCurrentIndex();
}

template <class V, class T>
void Set(V& value, const T& content) {
    value.SetValue(content, nullptr);
}
inline void Set(values::ValueSelection& selection, int index) {
    selection.SelectIndex(index, nullptr);
}

/// Sets \a value to what the store has under \a key, or to what it has itself.
template <class V>
void ReadInto(ICfg& cfg, const QString& key, V& value) {
    Set(value, Read(cfg, key, ContentOf(value)));
}

/// How the store keeps a setting. A key that is missing is written with \a ifMissing, unless that is null.
template <class T = std::nullptr_t>
struct Stored {
    QLatin1String key;
    T ifMissing = nullptr;

    void WriteIfMissing(ICfg& cfg) const {
        if constexpr (!std::is_null_pointer_v<T>) {
            // A missing key reads as whatever is asked for.
            const T content = Read(cfg, key, T(0));
            if (content != Read(cfg, key, T(1))) Commit(cfg, key, ifMissing);
        }
    }
};
Stored(QLatin1String)->Stored<>;
template <class T>
Stored(QLatin1String, T) -> Stored<T>;

}  // namespace storedsetting
