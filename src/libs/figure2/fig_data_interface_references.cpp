// What a DataInterface knows besides its own tokens: further registries, and providers of the data behind references.
#include "ZemFig2DataInterface.h"

#include "ZemFig2TokenInterface.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

template <class Interfaces, class Interface>
auto findInterface(Interfaces &interfaces, Interface const *wanted)
{
    return std::find(interfaces.begin(), interfaces.end(), wanted);
}

template <class Interfaces, class Interface>
void addInterface(Interfaces &interfaces, Interface const *interface, char const *function)
{
    if (findInterface(interfaces, interface) != interfaces.end())
        throw ProgError(function, "fig_data_interface", __LINE__, "Interface is already registered");
    interfaces.push_back(interface);
}

template <class Interfaces, class Interface>
void removeInterface(Interfaces &interfaces, Interface const *interface, char const *function)
{
    auto const found = findInterface(interfaces, interface);
    if (found == interfaces.end())
        throw ProgError(function, "fig_data_interface", __LINE__, "Interface not registered");
    interfaces.erase(found);
}

bool isReference(Variable_t type)
{
    return type == VARIABLE_IMAGE_REFERENCE || type == VARIABLE_CHART_REFERENCE || type == VARIABLE_SNAPSHOT_REFERENCE;
}

/// What a provider leaves behind with a refusal is not looked at. One that knows nothing of overlays is asked without.
bool askForImage(DataReferenceInterface const *provider, QString const &name, Zem::Image const **image,
                 Zem::ImageColor const **overlay, ImageData const **data)
{
    Zem::Image const *foundImage = nullptr;
    Zem::ImageColor const *foundOverlay = nullptr;
    ImageData const *foundData = nullptr;
    if (!provider->getImageReference(name, &foundImage, &foundOverlay, &foundData)) {
        foundOverlay = nullptr;
        if (!provider->getImageReference(name, &foundImage, &foundData))
            return false;
    }
    *image = foundImage;
    *overlay = foundOverlay;
    *data = foundData;
    return true;
}

} // namespace

void DataInterface::registerSubDataInterface(DataInterface const *interface)
{
    addInterface(subInterfaces_, interface, "Zem::Fig2::DataInterface::registerSubDataInterface");
}

void DataInterface::unregisterSubDataInterface(DataInterface const *interface)
{
    removeInterface(subInterfaces_, interface, "Zem::Fig2::DataInterface::unregisterSubDataInterface");
}

bool DataInterface::isSubDataInterfaceRegistered(DataInterface const *interface) const
{
    return findInterface(subInterfaces_, interface) != subInterfaces_.end();
}

void DataInterface::registerReferenceInterface(DataReferenceInterface const *interface)
{
    addInterface(referenceInterfaces_, interface, "Zem::Fig2::DataInterface::registerReferenceInterface");
}

void DataInterface::unregisterReferenceInterface(DataReferenceInterface const *interface)
{
    removeInterface(referenceInterfaces_, interface, "Zem::Fig2::DataInterface::unregisterReferenceInterface");
}

/// `askProvider` is called for the own providers, `askInterface` for sub-interfaces that hold the token, until one of
/// these calls gives true.
template <class AskProvider, class AskInterface>
bool DataInterface::fetchReference(Token_t const &token, AskProvider const &askProvider,
                                   AskInterface const &askInterface) const
{
    requireVariable(token);
    return std::any_of(referenceInterfaces_.begin(), referenceInterfaces_.end(), askProvider) ||
           std::any_of(subInterfaces_.begin(), subInterfaces_.end(), [&](DataInterface const *interface) {
               return interface->tokenExists(token) && askInterface(interface);
           });
}

bool DataInterface::getImageReference(QString const &name, Zem::Image const **image, Zem::ImageColor const **overlay,
                                      ImageData const **data) const
{
    *image = nullptr;
    *overlay = nullptr;
    *data = nullptr;
    return fetchReference(
        {name, VARIABLE_IMAGE_REFERENCE},
        [&](DataReferenceInterface const *provider) { return askForImage(provider, name, image, overlay, data); },
        [&](DataInterface const *interface) { return interface->getImageReference(name, image, overlay, data); });
}

template <class Data>
bool DataInterface::fetchData(Token_t const &token, Data const **data,
                              bool (DataReferenceInterface::*askProvider)(QString const &, Data const **) const,
                              bool (DataInterface::*askInterface)(QString const &, Data const **) const) const
{
    *data = nullptr;
    return fetchReference(
        token,
        [&](DataReferenceInterface const *provider) {
            Data const *found = nullptr;
            bool const isServed = (provider->*askProvider)(token.getName(), &found);
            if (isServed)
                *data = found;
            return isServed;
        },
        [&](DataInterface const *interface) { return (interface->*askInterface)(token.getName(), data); });
}

bool DataInterface::getChartReference(QString const &name, ChartData const **data) const
{
    return fetchData<ChartData>({name, VARIABLE_CHART_REFERENCE}, data, &DataReferenceInterface::getChartReference,
                                &DataInterface::getChartReference);
}

bool DataInterface::getSnapshotReference(QString const &name, SnapshotData const **data) const
{
    return fetchData<SnapshotData>({name, VARIABLE_SNAPSHOT_REFERENCE}, data,
                                   &DataReferenceInterface::getSnapshotReference, &DataInterface::getSnapshotReference);
}

bool DataInterface::releaseReferenceData(Token_t const &token) const
{
    requireVariable(token);
    if (!isReference(token.getType()))
        throw ProgError("Zem::Fig2::DataInterface::releaseReferenceData", "fig_data_interface", __LINE__,
                        "Trying to release a non-reference token");
    if (tokens_.contains(token)) {
        for (DataReferenceInterface const *provider : referenceInterfaces_)
            provider->releaseReferenceData(token);
        return true;
    }
    return std::any_of(subInterfaces_.begin(), subInterfaces_.end(), [&token](DataInterface const *interface) {
        return interface->tokenExists(token) && interface->releaseReferenceData(token);
    });
}

} // namespace Zem::Fig2
