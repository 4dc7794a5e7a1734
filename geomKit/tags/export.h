/// @file
/// Which symbols the tag library shows.
#pragma once

#if defined(GEOMKIT_STATIC)
#define GEOMKIT_TAGS_API
#elif defined(_WIN32)
#if defined(geomKitTags_EXPORTS)
#define GEOMKIT_TAGS_API __declspec(dllexport)
#else
#define GEOMKIT_TAGS_API __declspec(dllimport)
#endif
#else
#define GEOMKIT_TAGS_API __attribute__((visibility("default")))
#endif
