#pragma once

// Raises an editor's block counter for its lifetime: what the editor writes into its own fields, its
// commands or the model while the counter is raised must not come back to it as an edit.
class QBlockCounter
{
public:
    explicit QBlockCounter(int& counter) : counter(counter) { ++counter; }
    ~QBlockCounter() { --counter; }
    QBlockCounter(const QBlockCounter&) = delete;
    QBlockCounter& operator=(const QBlockCounter&) = delete;

private:
    int& counter;
};
