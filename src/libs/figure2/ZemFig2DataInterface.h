// ZemFig2DataInterface.h: DataInterface, the older registry of a figure's own tokens.
// Layer: tokens. No locks: a registry is used by one thread at a time.
#pragma once

#include "ZemFig2Variable.h"

#include <map>
#include <vector>

namespace Zem::Fig2 {

class DataReferenceInterface;

/// A sorted set of tokens with their records. It can look into further registries, and fetches the data of reference
/// tokens from providers. Figures draw from a FigureTokenInterface only; a registry is filled into one
/// (FigureTokenContainer), and comes from older files.
///
/// Who registers here, registries and providers, is not owned. Unless told otherwise an operation throws ProgError for
/// a token that is not registered.
class DataInterface
{
public:
    using Tokens = std::map<Token_t, Variable *>;
    using SubInterfaces = std::vector<DataInterface const *>;

    /// What merge does with reference tokens; any other value leaves them out.
    enum MergeResolveMode_t : unsigned int {
        MERGE_KEEP_REFERENCE = 0,   ///< they stay references
        MERGE_RESOLVE_REFERENCE = 1 ///< their data are fetched and stored
    };

    /// The pattern of the names of tokens of the application's own.
    static constexpr QLatin1StringView SYSTEM_TOKEN_TEMPLATE{"Zem_Fig2_SystemToken_%1"};

    DataInterface() = default;
    /// Copies the own tokens deeply; the copy knows no other registries and no providers.
    DataInterface(DataInterface const &other);
    ~DataInterface();

    // These look into the sub-interfaces as well.
    QString getTokenValue(Token_t const &token, QString const &format) const;
    unsigned int getModifiedCounter(Token_t const &token) const;
    bool tokenExists(Token_t const &token) const;
    /// The types under which the name exists, ascending.
    std::vector<Variable_t> getTokenTypes(QString const &name) const;
    QString getDisplayText(Token_t const &token) const;
    int getSortIndex(Token_t const &token) const;
    QString getGroupToken(Token_t const &token) const;
    QString getTypeHint(Token_t const &token) const;
    /// The unit is filled in unless the pointer is null.
    double getDouble(QString const &name, UnitData *unit) const;
    int getInt(QString const &name) const;
    QString getString(QString const &name) const;
    /// What is handed out stays the registry's.
    void getImage(QString const &name, Zem::Image const **image, Zem::ImageColor const **overlay,
                  ImageData const **data) const;
    void getChart(QString const &name, ChartData const **data) const;
    void getSnapshot(QString const &name, SnapshotData const **data) const;
    /// Asks the providers, then the sub-interfaces, until one answers. What comes back is the provider's; each fetch
    /// that gave true is followed by one releaseReferenceData. Without an answer the outputs are null.
    bool getImageReference(QString const &name, Zem::Image const **image, Zem::ImageColor const **overlay,
                           ImageData const **data) const;
    bool getChartReference(QString const &name, ChartData const **data) const;
    bool getSnapshotReference(QString const &name, SnapshotData const **data) const;
    /// Tells every provider. Throws ProgError for a token that is no reference.
    bool releaseReferenceData(Token_t const &token) const;

    // These know the own tokens only.
    Tokens::const_iterator getTokenBegin() const { return tokens_.begin(); }
    Tokens::const_iterator getTokenEnd() const { return tokens_.end(); }
    /// Takes ownership and replaces what stood under the token. Throws ProgError for one that only a sub-interface has.
    void addVariable(Token_t const &token, Variable *variable);
    void removeToken(Token_t const &token);
    void clear();
    void setModified(Token_t const &token);
    void setDisplayText(Token_t const &token, QString const &text);
    void setSortIndex(Token_t const &token, int index);
    void setGroupToken(Token_t const &token, QString const &group);
    void setDefaultFormat(Token_t const &token, QString const &format);
    void setIconId(Token_t const &token, QString const &id);
    void setTypeHint(Token_t const &token, QString const &hint);
    // These make the token when there is none of that type.
    void setInt(QString const &name, int value);
    void setDouble(QString const &name, double value, UnitData const &unit);
    /// A null unit stands for none.
    void setDouble(QString const &name, double value, Unit const *unit);
    void setString(QString const &name, QString const &value);
    /// Take ownership. Throw ProgError, and change nothing, for a null image, chart or snapshot; overlay and image data
    /// may be null.
    void setImage(QString const &name, Zem::Image const *image, Zem::ImageColor const *overlay, ImageData const *data);
    void setChart(QString const &name, ChartData *data);
    void setSnapshot(QString const &name, SnapshotData *data);
    void setImageReference(QString const &name);
    void setChartReference(QString const &name);
    void setSnapshotReference(QString const &name);
    void setGroup(QString const &name);
    void setSeparator(QString const &name);

    SubInterfaces::const_iterator getSubDataBegin() const { return subInterfaces_.begin(); }
    SubInterfaces::const_iterator getSubDataEnd() const { return subInterfaces_.end(); }
    /// Throw ProgError for one that is registered already, and for one that is not.
    void registerSubDataInterface(DataInterface const *interface);
    void unregisterSubDataInterface(DataInterface const *interface);
    bool isSubDataInterfaceRegistered(DataInterface const *interface) const;
    void registerReferenceInterface(DataReferenceInterface const *interface);
    void unregisterReferenceInterface(DataReferenceInterface const *interface);

    /// Takes over copies of the source's own tokens. Where a token is here already it is replaced or, without
    /// `overwrite`, left alone. Throws ProgError for a target with sub-interfaces; a failure keeps what was merged.
    void merge(DataInterface const &source, bool overwrite, MergeResolveMode_t mode);

    /// A line for each own token, for diagnosis.
    QString toString() const;

    /// The own tokens. The two numbers are not used. load throws IO::StreamException; what was read so far stays.
    void save(IO::OutStream *stream, int, int) const;
    void load(IO::InStream *stream, int, int);

private:
    DataInterface &operator=(DataInterface const &other);

    Variable const *findVariable(Token_t const &token, bool searchSub) const;
    Variable const &requireVariable(Token_t const &token) const;
    Variable &requireOwnVariable(Token_t const &token);
    template <class Field, class Value>
    void setDescription(Token_t const &token, Field Variable::*field, Value const &value);
    template <class Change>
    void setValue(Token_t const &token, Change const &change);
    void setBare(QString const &name, Variable_t type);
    template <class AskProvider, class AskInterface>
    bool fetchReference(Token_t const &token, AskProvider const &askProvider, AskInterface const &askInterface) const;
    template <class Data>
    bool fetchData(Token_t const &token, Data const **data,
                   bool (DataReferenceInterface::*askProvider)(QString const &, Data const **) const,
                   bool (DataInterface::*askInterface)(QString const &, Data const **) const) const;

    Tokens tokens_; // owns the records
    SubInterfaces subInterfaces_;
    std::vector<DataReferenceInterface const *> referenceInterfaces_;
};

} // namespace Zem::Fig2
