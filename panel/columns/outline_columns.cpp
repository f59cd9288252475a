#include "outline_columns.h"

#include <QPersistentModelIndex>
#include <QSettings>

#include <algorithm>

namespace kyr::panel {

namespace {

constexpr int usualWidth = 72;
/// A drag makes a new width for each pixel, and the settings are a file.
constexpr int savesAfterMilliseconds = 300;

} // namespace

OutlineColumns::OutlineColumns(QObject* parent) : QObject(parent)
{
    m_rereading.setSingleShot(true);
    m_rereading.setInterval(0);
    connect(&m_rereading, &QTimer::timeout, this, &OutlineColumns::read);
    m_saving.setSingleShot(true);
    m_saving.setInterval(savesAfterMilliseconds);
    connect(&m_saving, &QTimer::timeout, this, &OutlineColumns::save);
}

OutlineColumns::~OutlineColumns()
{
    saveNow();
}

void OutlineColumns::setModel(QAbstractItemModel* model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(&m_rereading);
    m_model = model;
    if (model) {
        using Model = QAbstractItemModel;
        // A choice of columns or a move is several signals.
        const auto reread = QOverload<>::of(&QTimer::start);
        connect(model, &Model::rowsInserted, &m_rereading, reread);
        connect(model, &Model::rowsRemoved, &m_rereading, reread);
        connect(model, &Model::rowsMoved, &m_rereading, reread);
        connect(model, &Model::dataChanged, &m_rereading, reread);
        connect(model, &Model::layoutChanged, &m_rereading, reread);
        connect(model, &Model::modelReset, &m_rereading, reread);
        connect(model, &QObject::destroyed, &m_rereading, reread);
    }
    read();
    Q_EMIT modelChanged();
}

int OutlineColumns::role(const char* name) const
{
    return m_model->roleNames().key(name, -1);
}

void OutlineColumns::read()
{
    m_rereading.stop();
    QList<Column> columns;
    for (int row = 0; m_model && row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        const QVariant valueRole = index.data(role("valueRole"));
        // Groups of columns are in the model too.
        if (!valueRole.isValid())
            continue;
        Column column;
        column.id = index.data(role("columnId")).toString();
        column.title = index.data().toString();
        column.valueRole = valueRole.toInt();
        const int width = index.data(role("width")).toInt();
        column.width = width > 0 ? width : usualWidth;
        column.toggle = index.data(role("toggle")).toBool();
        const int alignment = index.data(role("alignment")).toInt();
        column.alignment =
            alignment != 0 ? alignment & int(Qt::AlignHorizontal_Mask) : int(Qt::AlignLeft);
        column.editable = index.data(role("editable")).toBool();
        column.choices = index.data(role("choices")).toStringList();
        columns.append(column);
    }
    if (columns == m_columns)
        return;
    m_columns = columns;
    Q_EMIT widthsChanged();
    Q_EMIT columnsChanged();
    Q_EMIT sortingChanged();
}

QVariantList OutlineColumns::columns() const
{
    QVariantList list;
    for (const Column& column : m_columns) {
        list.append(QVariantMap{{QStringLiteral("columnId"), column.id},
                                {QStringLiteral("title"), column.title},
                                {QStringLiteral("valueRole"), column.valueRole},
                                {QStringLiteral("toggle"), column.toggle},
                                {QStringLiteral("alignment"), column.alignment},
                                {QStringLiteral("editable"), column.editable},
                                {QStringLiteral("choices"), column.choices}});
    }
    return list;
}

QList<int> OutlineColumns::valueRoles() const
{
    QList<int> roles;
    for (const Column& column : m_columns)
        roles.append(column.valueRole);
    return roles;
}

int OutlineColumns::widthOf(const Column& column) const
{
    return m_widths.value(column.id, column.width);
}

QVariantList OutlineColumns::widths() const
{
    QVariantList widths;
    for (const Column& column : m_columns)
        widths.append(widthOf(column));
    return widths;
}

void OutlineColumns::setWidth(int column, int width)
{
    if (column < 0 || column >= m_columns.size())
        return;
    width = std::max(width, smallestWidth);
    if (width == widthOf(m_columns[column]))
        return;
    m_widths.insert(m_columns[column].id, width);
    m_saving.start();
    Q_EMIT widthsChanged();
}

void OutlineColumns::move(int column, int to)
{
    if (!m_model || column < 0 || column >= m_columns.size() || to < 0 || to > m_columns.size())
        return;
    const int target = to > column ? to - 1 : to;
    if (target == column)
        return;
    QStringList ids;
    for (const Column& shown : qAsConst(m_columns))
        ids.append(shown.id);
    ids.move(column, target);
    writeOrder(ids);
    read();
}

void OutlineColumns::writeOrder(const QStringList& ids)
{
    // The model sorts its rows as they change.
    struct Place
    {
        QPersistentModelIndex index;
        int order;
        int wanted;
    };
    const int idRole = role("columnId");
    const int orderRole = role("columnOrder");
    std::vector<Place> places;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        const int wanted = ids.indexOf(index.data(idRole).toString());
        if (wanted >= 0)
            places.push_back({index, index.data(orderRole).toInt(), wanted});
    }
    std::vector<int> orders;
    orders.reserve(places.size());
    for (const Place& place : places)
        orders.push_back(place.order);
    std::sort(orders.begin(), orders.end());
    for (std::size_t i = 1; i < orders.size(); ++i)
        orders[i] = std::max(orders[i], orders[i - 1] + 1);
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& a, const Place& b) { return a.wanted < b.wanted; });
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].index.isValid() && places[i].order != orders[i])
            m_model->setData(places[i].index, orders[i], orderRole);
    }
}

int OutlineColumns::sortRole() const
{
    if (m_sortId == nameId())
        return Qt::DisplayRole;
    const auto sorts = [this](const Column& column) { return column.id == m_sortId; };
    const auto column = std::find_if(m_columns.begin(), m_columns.end(), sorts);
    return column == m_columns.end() ? -1 : column->valueRole;
}

void OutlineColumns::sortBy(const QString& columnId)
{
    if (columnId != m_sortId) {
        m_sortId = columnId;
        m_sortDescending = false;
    } else if (!m_sortDescending) {
        m_sortDescending = true;
    } else {
        m_sortId.clear();
        m_sortDescending = false;
    }
    save();
    Q_EMIT sortingChanged();
}

void OutlineColumns::setSettingsName(const QString& name)
{
    if (name == m_settingsName)
        return;
    saveNow();
    m_settingsName = name;
    load();
    Q_EMIT settingsNameChanged();
}

void OutlineColumns::load()
{
    if (m_settingsName.isEmpty())
        return;
    QSettings settings;
    settings.beginGroup(m_settingsName);
    m_widths.clear();
    const QVariantMap widths = settings.value(QStringLiteral("widths")).toMap();
    for (auto width = widths.begin(); width != widths.end(); ++width)
        m_widths.insert(width.key(), std::max(width->toInt(), smallestWidth));
    m_sortId = settings.value(QStringLiteral("sortColumn")).toString();
    m_sortDescending = settings.value(QStringLiteral("sortDescending")).toBool();
    Q_EMIT widthsChanged();
    Q_EMIT sortingChanged();
}

void OutlineColumns::saveNow()
{
    if (m_saving.isActive())
        save();
    m_saving.stop();
}

void OutlineColumns::save() const
{
    if (m_settingsName.isEmpty())
        return;
    QSettings settings;
    settings.beginGroup(m_settingsName);
    QVariantMap widths;
    for (auto width = m_widths.begin(); width != m_widths.end(); ++width)
        widths.insert(width.key(), *width);
    settings.setValue(QStringLiteral("widths"), widths);
    settings.setValue(QStringLiteral("sortColumn"), m_sortId);
    settings.setValue(QStringLiteral("sortDescending"), m_sortDescending);
}

} // namespace kyr::panel
