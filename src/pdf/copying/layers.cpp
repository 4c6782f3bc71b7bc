#include "pdf/copying/layers.h"

#include "pdf/structure/DocumentData.h"

#include <set>

namespace folvane::pdf {

namespace {

/// Default states of the layers of one source (ISO 32000-2, 8.11.4.3).
class DefaultStates {
public:
    explicit DefaultStates(QPDFObjectHandle configuration)
        : m_baseIsOff(configuration.getKey("/BaseState").isNameAndEquals("/OFF")),
          m_exceptions(members(configuration.getKey(m_baseIsOff ? "/ON" : "/OFF")))
    {
    }

    bool isHidden(QPDFObjectHandle layer) const
    {
        return m_baseIsOff != (m_exceptions.count(layer.getObjGen()) > 0);
    }

private:
    static ObjGenSet members(QPDFObjectHandle list)
    {
        ObjGenSet set;
        if (list.isArray()) {
            for (const QPDFObjectHandle& layer : list.getArrayAsVector())
                set.insert(layer.getObjGen());
        }
        return set;
    }

    bool m_baseIsOff;
    ObjGenSet m_exceptions;
};

class LayerJoiner {
public:
    /// Takes the layers of a source through its first part. `all`: also those that nothing refers to.
    void add(SourcePart& part, bool all)
    {
        const std::vector<QPDFObjectHandle> layers = layersOf(part.source());
        if (layers.empty())
            return;
        QPDFObjectHandle properties = part.source().catalogue().getKey("/OCProperties");
        QPDFObjectHandle configuration = properties.getKey("/D");
        if (!configuration.isDictionary())
            configuration = QPDFObjectHandle::newDictionary();
        ObjectCopier& copier = part.copier();
        const DefaultStates states(configuration);
        for (const QPDFObjectHandle& layer : layers)
            addLayer(copier, layer, states, all);
        for (const char* list : {"/Order", "/RBGroups", "/Locked", "/AS"})
            append(list, copier, configuration.getKey(list));
        for (const char* key : {"/Name", "/Creator", "/ListMode"}) {
            if (!m_configuration.hasKey(key) && configuration.hasKey(key))
                m_configuration.replaceKey(key, copier.copy(configuration.getKey(key)));
        }
        takeIntent(copier.copy(configuration.getKey("/Intent")));
        if (part.isWhole() && properties.hasKey("/Configs"))
            m_alternatives = copier.copy(properties.getKey("/Configs"));
        copier.drain();
    }

    QPDFObjectHandle properties()
    {
        if (m_layers.getArrayNItems() == 0)
            return QPDFObjectHandle::newNull();
        if (m_hidden.getArrayNItems() > 0)
            m_configuration.replaceKey("/OFF", m_hidden);
        m_configuration.replaceKey("/Intent", m_intent);
        QPDFObjectHandle properties = QPDFObjectHandle::newDictionary();
        properties.replaceKey("/OCGs", m_layers);
        properties.replaceKey("/D", m_configuration);
        if (m_alternatives.isInitialized())
            properties.replaceKey("/Configs", m_alternatives);
        return properties;
    }

private:
    void addLayer(ObjectCopier& copier, QPDFObjectHandle layer, const DefaultStates& states, bool all)
    {
        if (!layer.isIndirect() || !layer.isDictionary())
            return;
        if (!all && copier.find(layer.getObjGen()).isNull()) {
            copier.bury(layer.getObjGen()); // so that it leaves the lists below, too
            return;
        }
        QPDFObjectHandle copied = copier.copy(layer);
        if (copied.isNull())
            return;
        m_layers.appendItem(copied);
        if (states.isHidden(layer))
            m_hidden.appendItem(copied);
    }

    /// Layers of another intent than the configuration's would always show, so where sources differ all intents count.
    void takeIntent(QPDFObjectHandle intent)
    {
        if (intent.isNull())
            intent = QPDFObjectHandle::newName("/View");
        if (m_intent.isInitialized() && m_intent.unparse() != intent.unparse())
            intent = QPDFObjectHandle::newName("/All");
        m_intent = intent;
    }

    void append(const char* key, ObjectCopier& copier, QPDFObjectHandle list)
    {
        if (!list.isArray())
            return;
        QPDFObjectHandle joined = m_configuration.getKey(key);
        if (!joined.isArray())
            joined = QPDFObjectHandle::newArray();
        for (const QPDFObjectHandle& item : copier.copyList(list).getArrayAsVector())
            joined.appendItem(item);
        m_configuration.replaceKey(key, joined);
    }

    QPDFObjectHandle m_layers = QPDFObjectHandle::newArray();
    QPDFObjectHandle m_hidden = QPDFObjectHandle::newArray();
    QPDFObjectHandle m_configuration = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle m_intent;
    QPDFObjectHandle m_alternatives;
};

} // namespace

std::vector<QPDFObjectHandle> layersOf(DocumentData& source)
{
    QPDFObjectHandle properties = source.catalogue().getKey("/OCProperties");
    if (!properties.isDictionary() || !properties.getKey("/OCGs").isArray())
        return {};
    return properties.getKey("/OCGs").getArrayAsVector();
}

QPDFObjectHandle joinedLayers(std::list<SourcePart>& parts)
{
    std::set<const DocumentData*> complete;
    for (const SourcePart& part : parts) {
        if (part.isComplete())
            complete.insert(&part.source());
    }
    LayerJoiner joiner;
    for (SourcePart& part : parts) {
        if (part.isOriginal())
            joiner.add(part, complete.count(&part.source()) > 0);
    }
    return joiner.properties();
}

} // namespace folvane::pdf
