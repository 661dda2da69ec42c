#pragma once

#include <QList>

#include <functional>

// The pools of all element classes, so that the application's end can delete every instance made.
class QTextElementPools
{
public:
    static void add(std::function<void()> deleteAll);
    static void deleteAll();
};

// The process-wide pool of one element class T: every instance ever made, and the free ones. A line
// that loses and regains an element of the same class takes it from here instead of allocating.
template <class T>
class QTextElementPool
{
public:
    // The head of the free list, or a new instance.
    static T* create()
    {
        if (!freeList().isEmpty()) {
            T* element = freeList().takeFirst();
            element->reset();
            return element;
        }
        if (all().isEmpty()) QTextElementPools::add(&QTextElementPool<T>::deleteAll);
        T* element = new T;
        all().append(element);
        return element;
    }

    // Back to the free list; called from T::release().
    static void release(T* element) { freeList().append(element); }

    // Forgets the free instances; they stay alive until deleteAll(). A model calls it when it goes.
    static void clearFree() { freeList().clear(); }

    static void deleteAll()
    {
        freeList().clear();
        const QList<T*> instances = all();
        all().clear();
        qDeleteAll(instances);
    }

    static int instanceCount() { return all().size(); }
    static int freeCount() { return freeList().size(); }
    static bool isFree(const T* element) { return freeList().contains(const_cast<T*>(element)); }

private:
    static QList<T*>& all()
    {
        static QList<T*> instances;
        return instances;
    }
    static QList<T*>& freeList()
    {
        static QList<T*> instances;
        return instances;
    }
};
