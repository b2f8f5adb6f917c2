#pragma once

#include "core/serializable.h"

#include <list>
#include <string>

/// The outline of a tree: which nodes are open, by their texts. Files hold trees up to kDeepestNesting levels; what
/// lies deeper is not filed.
class TreeOutlineNode : public CSerializable {
public:
    TreeOutlineNode() = default;
    explicit TreeOutlineNode(std::string text);
    TreeOutlineNode(const TreeOutlineNode&) = delete;
    TreeOutlineNode& operator=(const TreeOutlineNode&) = delete;
    ~TreeOutlineNode() override;

    std::string name;
    std::list<TreeOutlineNode*> children; ///< owned

    bool Serialize(IOStream& stream) override;
};
