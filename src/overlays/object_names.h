#pragma once

#include <string>

/// Finds the next free name of a template such as "P#": the names in use are added one by one.
class CNameCounter {
public:
    /// Fills the date and time into the template, unless it holds "%R": such a template is a waypoint's.
    explicit CNameCounter(const std::string& name_template);
    void Add(const std::string& used_name);
    /// The template with its last "#" replaced by one more than the highest number in use there, at least 1; without
    /// "#" the template itself. A number too large to count stays the largest there is.
    std::string Name() const;

private:
    std::string prefix; ///< before the "#"
    std::string suffix; ///< behind it
    bool numbered = false;
    long highest = 0;
};

/// The next free name among the objects of a list of pointers to what has a `name`.
template <class List>
std::string GetNameFromTemplate(const std::string& name_template, const List& list)
{
    CNameCounter counter(name_template);
    for (const auto* object : list) counter.Add(object->name);
    return counter.Name();
}

/// Replaces the last "#" by the number, or appends it.
std::string NumberedName(const std::string& name_template, int number);
/// The same for a waypoint: "%R" also becomes the route's name.
std::string WaypointName(const std::string& name_template, const std::string& route_name, int number);
