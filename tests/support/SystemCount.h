#ifndef VELK_TESTS_SYSTEMCOUNT_H
#define VELK_TESTS_SYSTEMCOUNT_H

#include <QtGlobal>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VELK_TESTS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VELK_TESTS_SANITIZED 1
#endif
#endif

/// How many random systems to try. A sanitizer takes many times as long, and finds what it is for in a quarter of them.
constexpr int systemCount(int usual)
{
#ifdef VELK_TESTS_SANITIZED
    return usual / 4;
#else
    return usual;
#endif
}

#endif
