#include "platform/linux/xml/xpath_functions.h"

#include <libxml/xpathInternals.h>

#include <memory>
#include <new>
#include <unordered_set>
#include <vector>

#include "formats/xml/xpath_rewriting.h"

namespace intake {

namespace {

struct ObjectDeleter {
    void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};
using Object = std::unique_ptr<xmlXPathObject, ObjectDeleter>;

/// A set of nodes that grows; each is in it once.
class NodeSet {
public:
    /// What is added cannot repeat when it is all below one node.
    explicit NodeSet(bool mayRepeat) : object_(xmlXPathNewNodeSet(nullptr)), mayRepeat_(mayRepeat) {
        if (object_ == nullptr || object_->nodesetval == nullptr) {
            throw std::bad_alloc();
        }
    }

    /// False when it is there already. Nodes of namespaces are copies, of which there are few.
    bool add(xmlNode* node) {
        const bool isNew = node->type == XML_NAMESPACE_DECL
                               ? xmlXPathNodeSetContains(object_->nodesetval, node) == 0
                               : !mayRepeat_ || seen_.insert(node).second;
        if (isNew && xmlXPathNodeSetAddUnique(object_->nodesetval, node) < 0) {
            throw std::bad_alloc();  // or there are too many, which the library has said
        }
        return isNew;
    }

    /// Those that are `wanted`, and the root if it is.
    void addDescendants(xmlNode* root, bool (*wanted)(const xmlNode*)) {
        for (xmlNode* node = root; node != nullptr;) {
            // What is there already is so with all below it.
            const bool isNew = !wanted(node) || add(node);
            node = isNew && hasChildren(node) ? node->children : nodeBehind(node, root);
        }
    }

    static bool hasChildren(const xmlNode* node) {
        return (node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE) &&
               node->children != nullptr;
    }

    Object release() { return std::move(object_); }

private:
    static xmlNode* nodeBehind(xmlNode* node, const xmlNode* root) {
        while (node != root && node->next == nullptr) {
            node = node->parent;
        }
        return node == root ? nullptr : node->next;
    }

    Object object_;
    const bool mayRepeat_;
    std::unordered_set<const xmlNode*> seen_;
};

/// The arguments, from the first on; empty when one of them is no set of nodes.
std::vector<Object> takeArguments(xmlXPathParserContext* context, int count) {
    std::vector<Object> arguments(static_cast<size_t>(count));
    bool areSets = true;
    for (auto place = arguments.rbegin(); place != arguments.rend(); ++place) {
        place->reset(valuePop(context));
        areSets = areSets && *place != nullptr && (*place)->type == XPATH_NODESET;
    }
    if (!areSets) {
        arguments.clear();
    }
    return arguments;
}

/// Calls `add` for each node of all arguments and gives what the set holds then. Nothing may fly
/// through the library.
template <class Add>
void give(xmlXPathParserContext* context, int count, Add add) {
    try {
        const std::vector<Object> arguments = takeArguments(context, count);
        if (arguments.empty()) {
            xmlXPathErr(context, XPATH_INVALID_TYPE);
            return;
        }
        const bool isOne =
            count == 1 && xmlXPathNodeSetGetLength(arguments.front()->nodesetval) == 1;
        NodeSet all(!isOne);
        for (const Object& argument : arguments) {
            const xmlNodeSet* const nodes = argument->nodesetval;
            for (int i = 0; i < xmlXPathNodeSetGetLength(nodes); ++i) {
                add(all, nodes->nodeTab[i]);
            }
        }
        valuePush(context, all.release().release());
    } catch (const std::bad_alloc&) {
        context->error = XPATH_MEMORY_ERROR;
        context->context->lastError.code = XML_ERR_NO_MEMORY;
    }
}

void unite(xmlXPathParserContext* context, int count) {
    give(context, count, [](NodeSet& all, xmlNode* node) { all.add(node); });
}

bool isAny(const xmlNode*) {
    return true;
}

bool isElement(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE;
}

template <bool (*WANTED)(const xmlNode*)>
void descend(xmlXPathParserContext* context, int count) {
    give(context, count, [](NodeSet& all, xmlNode* node) { all.addDescendants(node, WANTED); });
}

using Expression = std::unique_ptr<xmlXPathCompExpr, decltype(&xmlXPathFreeCompExpr)>;
using Text = std::unique_ptr<xmlChar, decltype(xmlFree)>;

/// Where an evaluation is, which one within it changes.
class KeptPlace {
public:
    explicit KeptPlace(xmlXPathContext& context)
        : context_(context),
          node_(context.node),
          size_(context.contextSize),
          position_(context.proximityPosition) {}
    ~KeptPlace() {
        context_.node = node_;
        context_.contextSize = size_;
        context_.proximityPosition = position_;
    }
    KeptPlace(const KeptPlace&) = delete;
    KeptPlace& operator=(const KeptPlace&) = delete;

private:
    xmlXPathContext& context_;
    xmlNode* const node_;
    const int size_, position_;
};

/// Adds what the step finds from each node; false when one evaluation failed.
bool addFromEach(const xmlNodeSet* nodes, xmlXPathCompExpr* step, xmlXPathContext& context,
                 NodeSet& all) {
    const KeptPlace place(context);
    for (int i = 0; i < xmlXPathNodeSetGetLength(nodes); ++i) {
        context.node = nodes->nodeTab[i];
        const Object found(xmlXPathCompiledEval(step, &context));
        if (found == nullptr || found->type != XPATH_NODESET) {
            return false;
        }
        for (int j = 0; j < xmlXPathNodeSetGetLength(found->nodesetval); ++j) {
            all.add(found->nodesetval->nodeTab[j]);
        }
    }
    return true;
}

/// Null where there is no text, with which the library would crash.
Expression compiled(const xmlChar* text, xmlXPathContext* context) {
    return {text == nullptr ? nullptr : xmlXPathCtxtCompile(context, text), xmlXPathFreeCompExpr};
}

void takeStepFromEach(xmlXPathParserContext* context, int count) {
    constexpr int ARGUMENTS = 2;
    if (count != ARGUMENTS) {
        xmlXPathErr(context, XPATH_INVALID_ARITY);
        return;
    }
    const Text text(xmlXPathPopString(context), xmlFree);
    const Object nodes(valuePop(context));
    const Expression step = compiled(text.get(), context->context);
    if (step == nullptr || nodes == nullptr || nodes->type != XPATH_NODESET) {
        context->error = XPATH_EXPR_ERROR;
        return;
    }
    try {
        NodeSet all(true);
        if (addFromEach(nodes->nodesetval, step.get(), *context->context, all)) {
            valuePush(context, all.release().release());
        } else {
            context->error = XPATH_EXPR_ERROR;
        }
    } catch (const std::bad_alloc&) {
        context->error = XPATH_MEMORY_ERROR;
        context->context->lastError.code = XML_ERR_NO_MEMORY;
    }
}

}  // namespace

void registerXPathFunctions(xmlXPathContext& context) {
    const auto add = [&](const char* name, xmlXPathFunction function) {
        if (xmlXPathRegisterFunc(&context, reinterpret_cast<const xmlChar*>(name), function) != 0) {
            throw std::bad_alloc();
        }
    };
    add(UNION_FUNCTION, unite);
    add(DESCENDANTS_FUNCTION, descend<isAny>);
    add(PARENTS_FUNCTION, descend<NodeSet::hasChildren>);
    add(ELEMENTS_FUNCTION, descend<isElement>);
    add(EACH_FUNCTION, takeStepFromEach);
}

}  // namespace intake
