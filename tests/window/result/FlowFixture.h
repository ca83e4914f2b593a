// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/DatasetLoader.h"
#include "app/datasets/LooseDatasets.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"
#include "tests/window/result/ResultBench.h"

#include <QDir>
#include <QtTest>

/// A child window that writes down what is asked of it.
class RecordingChild : public CVXSChildWindow
{
public:
    explicit RecordingChild(CVXSSequenceDataset *sequence) : m_sequence(sequence)
    {
        CVXSChildWindow::setActiveChildWnd(this);
    }
    ~RecordingChild() override { CVXSChildWindow::setActiveChildWnd(nullptr); }

    bool isSequenceWindow() const override { return true; }
    CVXSSequenceDataset *getSequenceDataset() const override { return m_sequence; }
    CVXSDataset *getDataset() const override { return nullptr; }
    ESTATUS saveSequence() override
    {
        ++saves;
        return onSave ? onSave() : ESTATUS_SUCCESS;
    }
    void refreshAfterDatasetAdded() override { ++refreshes; }

    std::function<ESTATUS()> onSave;
    int saves = 0;
    int refreshes = 0;

private:
    CVXSSequenceDataset *m_sequence;
};

/// Answers load requests with a status, and writes them down.
class LoadReceiver : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QString path;
        bool flag = false;
        bool hasData = true;
        int statusBefore = -1;
    };

    QVector<Request> requests;
    ESTATUS answer = ESTATUS_SUCCESS;
    std::function<void()> onRequest;

public Q_SLOTS:
    void onLoadFile(const QString &path, bool flag, ESTATUS *status, downloaded_save_data *data)
    {
        Request request;
        request.path = path;
        request.flag = flag;
        request.hasData = data != nullptr;
        request.statusBefore = int(*status);
        requests << request;
        if (onRequest)
            onRequest();
        *status = answer;
    }
};

/// The bench with somebody who receives the load request: a receiver that answers with a status, or the
/// workspace's own loader.
class FlowFixture : public QObject
{
protected:
    void setUp()
    {
        m_bench = std::make_unique<ResultBench>();
        QVERIFY(m_bench->make());
        m_bench->choosePhotograph(QString());
        m_receiver = std::make_unique<LoadReceiver>();
        connectTo(window(), m_receiver.get());
        m_log = std::make_unique<LogCatcher>();
    }
    void tearDown()
    {
        m_loader.reset();
        m_loose.reset();
        m_bench.reset();
        m_receiver.reset();
        CVXSDataset::registerStoredDatasets(QString());
        CVXSChildWindow::setActiveChildWnd(nullptr);
    }

    static void connectTo(CVXSImageMathWnd *window, QObject *receiver)
    {
        QVERIFY(QObject::connect(
            window, SIGNAL(signalLoadImageMathReuslt(QString, bool, ESTATUS *, downloaded_save_data *)),
            receiver, SLOT(onLoadFile(QString, bool, ESTATUS *, downloaded_save_data *))));
    }

    /// Lets the workspace's loader answer instead.
    void loadForReal()
    {
        m_receiver.reset();
        CVXSWorkspace *workspace = m_bench->bound().workspace();
        m_loose = std::make_unique<LooseDatasets>(workspace);
        m_loader = std::make_unique<DatasetLoader>(workspace, m_loose.get());
        connectTo(window(), m_loader.get());
    }

    WindowProbe *window() const { return m_bench->window(); }
    CVXSSequenceDataset *sequence() const { return m_bench->bound().sequence(); }
    void press() { GuiDriver(window()).press("m_pDisplayBtn"); }
    QString tempFolder(const QString &click) const
    {
        return sequence()->getDatasetFolderPath(click) + QLatin1String("TempFolder");
    }
    QStringList results() const
    {
        return QDir(m_bench->dataPath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }
    const QVector<LoadReceiver::Request> &requests() const { return m_receiver->requests; }
    QStringList failures() const { return m_log->toolFailures(); }

    std::unique_ptr<ResultBench> m_bench;
    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<LoadReceiver> m_receiver;
    std::unique_ptr<LooseDatasets> m_loose;
    std::unique_ptr<DatasetLoader> m_loader;
};
