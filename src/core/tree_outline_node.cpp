#include "core/tree_outline_node.h"

TreeOutlineNode::TreeOutlineNode(std::string text) : name(std::move(text)) {}

TreeOutlineNode::~TreeOutlineNode()
{
    for (TreeOutlineNode* child : children) delete child;
}

bool TreeOutlineNode::Serialize(IOStream& stream)
{
    Section section(stream);
    if (!section.declare(name)) return false;
    if (stream.writing() && !stream.CanNest()) {
        std::list<TreeOutlineNode*> none;
        return CSerializableDeclareStatic(section, none);
    }
    return CSerializableDeclareStatic(section, children);
}
