def make(tool): pass
