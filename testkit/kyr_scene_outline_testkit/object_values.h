#pragma once

#include <kyr_scene_outline_testkit/scene_rows.h>

#include <map>
#include <string>

namespace kyr::testkit {

/// What a property of an object is, as a copy of it reads.
struct Value
{
    std::string type;
    std::string text;
    bool isWritable = false;

    bool operator==(const Value& other) const
    {
        return type == other.type && text == other.text && isWritable == other.isWritable;
    }
};

/// By the property's path.
using Values = std::map<std::string, Value>;

Values valuesOf(const kyr::ReflectedObject& object);
/// Of each object.
std::vector<Values> valuesOf(const Objects& objects);
/// What `target` holds once `source` was pasted onto it.
Values pasted(Values target, const Values& source);

} // namespace kyr::testkit
