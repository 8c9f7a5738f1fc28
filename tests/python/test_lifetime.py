"""A Foundation object is never invalid, whatever happens to its manager."""

import gc
import weakref

import pytest

import kvfound as kv


def test_one_object_stands_for_one_foundation():
    manager = kv.FoundationManager()
    raft = manager.add(kv.Foundation("Raft"))

    assert manager[0] is raft


def test_a_held_foundation_keeps_its_manager():
    manager = kv.FoundationManager()
    raft = manager.add(kv.Foundation("Raft"))
    gone = weakref.ref(manager)
    del manager
    gc.collect()

    assert raft.manager is gone()


def test_a_removed_foundation_lives_on_with_its_values():
    manager = kv.FoundationManager()
    raft = manager.add(kv.Foundation("Raft", area=(1, 2, 3)))

    manager.remove(raft)

    assert (raft.name, raft.area, raft.manager, len(manager)) == ("Raft", (1.0, 2.0, 3.0), None, 0)


def test_adding_twice_raises():
    manager = kv.FoundationManager()
    raft = manager.add(kv.Foundation("Raft"))

    with pytest.raises(ValueError, match="has this foundation already"):
        manager.add(raft)


def test_adding_to_another_manager_raises():
    manager, other = kv.FoundationManager(), kv.FoundationManager()
    raft = manager.add(kv.Foundation("Raft"))

    with pytest.raises(ValueError, match="take it out there first"):
        other.add(raft)
