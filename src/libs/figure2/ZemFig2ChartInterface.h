// ZemFig2ChartInterface.h: ChartInterface, through which the application tells what data its charts can show.
// Layer: tokens. Holds no locks; an object is used from the thread that owns the figures.
#pragma once

#include <ZemStream.h>
#include <ZemTokenInfo.h>
#include <ZemUnit.h>

#include <QtCore/QString>

#include <iosfwd>
#include <map>
#include <vector>

namespace Zem::Fig2 {

class ChartParameters;
class Element;
class Figure;

/// The offer of x and y data, as data tokens, and the count of the charts that use each combination. A combination of
/// one x token and any number of y tokens is named by a chart token, a text that createToken composes. The application
/// derives from it and is told when a chart token comes into use and when it goes out of use.
///
/// Figures are registered by Figure::setChartInterface. An interface may be destroyed before its figures: it takes
/// itself from them, and then tells nothing of the chart tokens any more.
class ChartInterface
{
public:
    /// What a chart may show along one axis: a name, the path of groups above it, and the kind of its source. A plain
    /// value.
    class DataToken
    {
    public:
        static constexpr QLatin1StringView PARAM_NAME{"name"};
        static constexpr QLatin1StringView PARAM_GROUPS{"groups"};
        static constexpr QLatin1StringView PARAM_CATEGORY{"category"};
        /// Read, never written: the one group of older releases.
        static constexpr QLatin1StringView PARAM_GROUP{"group"};

        DataToken() = default;
        explicit DataToken(QString const &name) : name_(name) {}
        DataToken(QString const &name, QString const &group) : name_(name), groups_{group} {}
        DataToken(QString const &name, std::vector<QString> const &groups) : name_(name), groups_(groups) {}

        /// Whether there is no name.
        bool isEmpty() const { return name_.isEmpty(); }
        QString const &getName() const { return name_; }
        void setName(QString const &name) { name_ = name; }
        /// Outermost first.
        std::vector<QString> const &getGroups() const { return groups_; }
        void setGroups(std::vector<QString> const &groups) { groups_ = groups; }
        void setParams(QString const &name, std::vector<QString> const &groups);
        TokenInfo::Category_t getCategory() const { return category_; }
        void setCategory(TokenInfo::Category_t category) { category_ = category; }

        bool operator==(DataToken const &) const = default;
        /// By name, category and number of groups. Two tokens that differ in their groups only are each less than the
        /// other, so this orders no set in which such a pair may stand.
        bool operator<(DataToken const &other) const;

        /// One stream block. load throws IO::StreamException and then changes nothing.
        void save(IO::OutStream *stream) const;
        void load(IO::InStream *stream);

        /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
        /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
        QString getParameterString(QString const &prefix) const;
        void createFromParameterString(QString &parameters, QString const &prefix);

        /// Text form with the fields of the stream block. A newer version throws IO::StreamException; a damaged text
        /// leaves the token alone.
        friend std::ostream &operator<<(std::ostream &stream, DataToken const &token);
        friend std::istream &operator>>(std::istream &stream, DataToken &token);

    private:
        template <class Reader>
        void readFields(Reader &reader, unsigned int version);

        QString name_;
        std::vector<QString> groups_;
        TokenInfo::Category_t category_ = TokenInfo::CATEGORY_UNDEFINED;
    };

    /// What every chart token begins with.
    static constexpr QLatin1StringView TOKEN_PREFIX{"GENERIC_CHART"};

    ChartInterface() = default;
    ChartInterface(ChartInterface const &) = delete;
    ChartInterface &operator=(ChartInterface const &) = delete;
    virtual ~ChartInterface();

    /// Called when the first chart begins to use a chart token, and when the last one has stopped.
    virtual void addChartToken(QString const &token) = 0;
    virtual void removeChartToken(QString const &token) = 0;

    /// What there is to choose from for each axis.
    virtual std::vector<DataToken> getTokensX() = 0;
    virtual std::vector<DataToken> getTokensY() = 0;
    /// The plain text of a token, and its text for the user.
    virtual QString getTokenName(DataToken const &token) = 0;
    virtual QString getTokenDescription(DataToken const &token) = 0;
    /// The text for the legend of a chart that draws the token as `parameters` tell; getTokenDescription() here.
    virtual QString getLegendDescription(DataToken const &token, ChartParameters const &parameters);
    virtual UnitData getTokenUnit(DataToken const &token) = 0;
    /// Proposes how to draw a token. False, and `parameters` are left alone, for no proposal, as here.
    virtual bool getDefaultParameters(DataToken const &token, ChartParameters *parameters) const;

    static bool isGenericChartToken(QString const &token);
    /// The chart token of the names of data tokens, which may hold any characters.
    static QString createToken(QString const &tokenX, std::vector<QString> const &tokensY);
    /// The names that createToken was given; both pointers are not null. Empty names do not come back in their places.
    /// False, and both are empty, for a text that is no chart token.
    static bool parseToken(QString const &token, QString *tokenX, std::vector<QString> *tokensY);
    /// The interface of the figure that the element is in; null without figure or interface.
    static ChartInterface *getInterface(Element const *element);

    /// A chart begins or stops to use a chart token. Unregistering an unknown one throws ProgError.
    void registerChartToken(QString const &token);
    void unregisterChartToken(QString const &token);
    /// Those in use, ascending.
    std::vector<QString> getChartTokens() const;

    /// The application calls this when it offers other tokens than before: charts drop what is gone.
    void tokenDeleted();

    /// Called by Figure::setChartInterface and by figures that come and go. Both throw ProgError, for a figure that is
    /// there already and for one that is not.
    void registerFigureForUpdate(Figure *figure);
    void unregisterFigureForUpdate(Figure *figure);

private:
    static QString quoteToken(QString const &token);

    std::map<QString, int> chartTokens_;
    std::vector<Figure *> figures_;
    bool closing_ = false; ///< from the beginning of the destructor on
};

} // namespace Zem::Fig2
